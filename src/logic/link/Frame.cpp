#include "link/Frame.h"

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr std::string_view Digits[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};

constexpr std::uint8_t EndMark = 0x04;

float DecodeGroup(std::span<const std::uint8_t> group) {
    std::string digits;
    for (const std::uint8_t byte : group.subspan(1, 4))
        digits += ByteText(byte);
    const auto tenths = static_cast<float>(Val(digits) / 10);
    const std::string text = std::string(ByteText(group[0]).substr(0, 1)) + Format(tenths, "000.0");
    return static_cast<float>(Val(text));
}

}  // namespace

std::string_view ByteText(std::uint8_t byte) {
    if (byte >= '0' && byte <= '9') return Digits[byte - '0'];
    switch (byte) {
        case '+': return "+";
        case '-': return "-";
        case '\t': return "\t";
        case EndMark: return "[EOT]";
        default: return "Error";
    }
}

void DecodeFrame(std::span<const std::uint8_t, FrameBytes> frame, std::array<float, 5>& reading) {
    for (std::size_t channel = 0; channel < FrameChannels; ++channel)
        reading[channel] = DecodeGroup(frame.subspan(GroupBytes * channel, GroupBytes - 1));
}

bool EndsFrame(std::uint8_t last) {
    const bool letter = (last & 0x0F) > 9 || (last >> 4) > 9;
    if (letter) throw RuntimeError(ErrorNumber::TypeMismatch);
    return last == EndMark;
}

bool ComposeRequest(std::string_view form, std::vector<std::uint8_t>& output, std::uint8_t a, std::uint8_t b) {
    if (form == "2") {
        output = {0x02, 0x00};
    } else if (form == "24") {
        output = {0x18, 0x00};
    } else if (form == "1" + std::to_string(a) + std::to_string(b) + "2") {
        output = {0x01, a, b, 0x02};
    } else {
        return false;
    }
    return true;
}

}  // namespace kelvo
