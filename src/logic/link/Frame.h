#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

/// Length of the interface's answer: four groups of sign, four digits and a separator, the last separator being
/// the end mark. The receive buffer of the port has exactly this size.
constexpr std::size_t FrameBytes = 24;
constexpr std::size_t FrameChannels = 4;
constexpr std::size_t GroupBytes = 6;

/// Text of one byte of a frame: the two signs, the digits, the tab, "[EOT]" for 0x04, "Error" for all others.
std::string_view ByteText(std::uint8_t byte);

/// Decodes the four channels into `reading` 0 to 3, in the order electrode 1, sensor 1, electrode 2, sensor 2;
/// `reading[4]` is not touched. The digits are tenths: `+1234` is 123.4.
///
/// Nothing is refused here. A digit byte outside the table ends the number ("12", then "Error": 1.2); a sign byte
/// that is no sign makes the channel 0, except a tab, which reads as plus, and a digit, which stands before the
/// three whole places ("5" before 012.3: 5012.3).
void DecodeFrame(std::span<const std::uint8_t, FrameBytes> frame, std::array<float, 5>& reading);

/// Whether the last byte of a frame is the end mark 0x04. Its hexadecimal text is read as a decimal number.
/// @throws RuntimeError 13 when that text holds a letter (0x0D, 0x2B and so on).
bool EndsFrame(std::uint8_t last);

/// Replaces `output` by the request that `form` names and tells whether it named one; any other text leaves
/// `output` as it was, so the previous request goes out again. Forms: "2" -> 02 00, "24" -> 18 00, and the digits
/// of 1, a, b, 2 in a row -> 01 a b 02, where `a` and `b` are the parameter bytes.
bool ComposeRequest(std::string_view form, std::vector<std::uint8_t>& output, std::uint8_t a = 0, std::uint8_t b = 0);

}  // namespace kelvo
