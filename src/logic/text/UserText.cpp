#include "text/UserText.h"

#include <algorithm>
#include <array>

#include "text/CodePage.h"

namespace kelvo {
namespace {

/// Lead bytes of one length and the second byte they allow. Source: RFC 3629, section 4.
struct Lead {
    unsigned char first, last;
    std::size_t length;
    unsigned char secondFirst, secondLast;
};
constexpr std::array<Lead, 9> Leads{{{0x00, 0x7F, 1, 0, 0},
                                     {0xC2, 0xDF, 2, 0x80, 0xBF},
                                     {0xE0, 0xE0, 3, 0xA0, 0xBF},
                                     {0xE1, 0xEC, 3, 0x80, 0xBF},
                                     {0xED, 0xED, 3, 0x80, 0x9F},
                                     {0xEE, 0xEF, 3, 0x80, 0xBF},
                                     {0xF0, 0xF0, 4, 0x90, 0xBF},
                                     {0xF1, 0xF3, 4, 0x80, 0xBF},
                                     {0xF4, 0xF4, 4, 0x80, 0x8F}}};

bool Within(char c, unsigned char first, unsigned char last) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= first && byte <= last;
}

/// Bytes of the character at the head; 0 when there is none.
std::size_t LengthOfHead(std::string_view bytes) {
    const auto* const lead = std::find_if(
        Leads.begin(), Leads.end(), [&bytes](const Lead& row) { return Within(bytes.front(), row.first, row.last); });
    if (lead == Leads.end() || bytes.size() < lead->length) return 0;
    if (lead->length > 1 && !Within(bytes[1], lead->secondFirst, lead->secondLast)) return 0;
    for (std::size_t at = 2; at < lead->length; ++at)
        if (!Within(bytes[at], 0x80, 0xBF)) return 0;
    return lead->length;
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = LengthOfHead(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string FromUserText(std::string_view bytes) {
    constexpr std::string_view Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(Mark)) bytes.remove_prefix(Mark.size());
    return IsUtf8(bytes) ? std::string(bytes) : FromCodePage(bytes);
}

}  // namespace kelvo
