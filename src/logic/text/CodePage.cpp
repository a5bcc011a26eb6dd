#include "text/CodePage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr unsigned FirstOwn = 0x80, FirstLatin = 0xA0;

/// Characters of the bytes 0x80 to 0x9F. Source: the Unicode consortium's mapping of Windows code page 1252,
/// with its "best fit" for the five bytes that have none.
constexpr std::array<char16_t, FirstLatin - FirstOwn> OwnCharacters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<char> ByteOf(char32_t character) {
    if (character < FirstOwn || (character >= FirstLatin && character <= 0xFF)) return static_cast<char>(character);
    const auto* const found = std::find(OwnCharacters.begin(), OwnCharacters.end(), character);
    if (found == OwnCharacters.end()) return std::nullopt;
    return static_cast<char>(static_cast<std::ptrdiff_t>(FirstOwn) + (found - OwnCharacters.begin()));
}

void AppendUtf8(std::string& out, char32_t character) {
    if (character < 0x80) {
        out += static_cast<char>(character);
    } else if (character < 0x800) {
        out += static_cast<char>(0xC0 | character >> 6);
        out += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | character >> 12);
        out += static_cast<char>(0x80 | (character >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (character & 0x3F));
    }
}

struct SequenceForm {
    unsigned char leadMask, lead;
    std::size_t length;
    char32_t least;  ///< below it a shorter form exists
};
constexpr std::array<SequenceForm, 4> SequenceForms{
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

/// The character at the head of the text, which it shortens; none when the bytes are not well-formed UTF-8. Numbers
/// that Unicode never gives to a character pass: they have no byte either.
std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
    const auto lead = static_cast<unsigned char>(utf8.front());
    const auto* const form = std::find_if(SequenceForms.begin(), SequenceForms.end(), [lead](const SequenceForm& row) {
        return (lead & row.leadMask) == row.lead;
    });
    if (form == SequenceForms.end() || utf8.size() < form->length) return std::nullopt;
    char32_t character = lead & static_cast<unsigned char>(~form->leadMask);
    for (std::size_t at = 1; at < form->length; ++at) {
        const auto next = static_cast<unsigned char>(utf8[at]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        character = character << 6 | (next & 0x3FU);
    }
    if (character < form->least) return std::nullopt;
    utf8.remove_prefix(form->length);
    return character;
}

bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < FirstOwn;
}

}  // namespace

std::string FromCodePage(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < FirstOwn) {
            out += c;
        } else {
            AppendUtf8(out, byte < FirstLatin ? OwnCharacters[byte - FirstOwn] : byte);
        }
    }
    return out;
}

std::string ToCodePage(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        if (IsAscii(utf8.front())) {
            out += utf8.front();
            utf8.remove_prefix(1);
            continue;
        }
        const std::optional<char32_t> character = TakeCharacter(utf8);
        const std::optional<char> byte = character ? ByteOf(*character) : std::nullopt;
        if (!byte) throw RuntimeError(ErrorNumber::InvalidCall);
        out += *byte;
    }
    return out;
}

bool InCodePage(char32_t character) {
    return ByteOf(character).has_value();
}

bool FitsCodePage(std::string_view utf8) {
    while (!utf8.empty()) {
        const std::optional<char32_t> character = TakeCharacter(utf8);
        if (!character || !InCodePage(*character)) return false;
    }
    return true;
}

}  // namespace kelvo
