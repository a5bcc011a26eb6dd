#pragma once

#include <string>
#include <string_view>

namespace kelvo {

// Texts that belong to the user and have no format (notes, introductions) are UTF-8 in their files. Older files, and
// those of some editors, are Windows-1252.

/// Whether the bytes are UTF-8 as RFC 3629 has it: no form longer than need be, no surrogates, nothing beyond U+10FFFF.
bool IsUtf8(std::string_view bytes);

/// The text of a file as UTF-8: a mark at its head (EF BB BF) is skipped, well-formed UTF-8 stays as it is, everything
/// else is Windows-1252. So "Ã¤" (C3 A4) is always "ä". Every file has a text.
std::string FromUserText(std::string_view bytes);

}  // namespace kelvo
