#pragma once

#include <string>
#include <string_view>

namespace kelvo {

// Texts are UTF-8 inside the program and Windows-1252 in every file. This is the one crossing.

/// Every byte has a character: the five bytes that the code page leaves open read as the control
/// characters of their number and are written back as the same byte.
std::string FromCodePage(std::string_view bytes);

/// @throws RuntimeError 5 when a character has no byte; boxes refuse such characters at entry, so this is a
/// last guard and not a way to lose one.
std::string ToCodePage(std::string_view utf8);

/// Whether the code page has a byte for the character.
bool InCodePage(char32_t character);

/// Whether every character of the text has a byte (and the text is well-formed UTF-8).
bool FitsCodePage(std::string_view utf8);

}  // namespace kelvo
