#include "tables/PrintedPage.h"

#include <algorithm>

#include "tables/Reports.h"
#include "tables/Sheets.h"

namespace kelvo {
namespace {

constexpr int TabField = 8;

bool StartsCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

/// Bytes of the first `characters` characters.
std::size_t BytesOf(std::string_view text, int characters) {
    std::size_t at = 0;
    for (; at < text.size(); ++at)
        if (StartsCharacter(text[at]) && characters-- == 0) break;
    return at;
}

std::string WithTabsAsFields(std::string_view value) {
    std::string out;
    std::size_t start = 0;
    for (std::size_t tab = value.find('\t'); tab != std::string_view::npos; tab = value.find('\t', start)) {
        out += Padded(value.substr(start, tab - start), TabField - 1) + " ";
        start = tab + 1;
    }
    out += value.substr(start);
    return out.substr(0, out.find_last_not_of(' ') + 1);
}

}  // namespace

int Characters(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::string Padded(std::string_view text, int field) {
    const int blanks = std::max(0, field - Characters(text));
    return std::string(text) + std::string(static_cast<std::size_t>(blanks), ' ');
}

int Capacity(const PageWriter& page) {
    const float one = page.TextWidth("0");
    int most = one > 0 ? static_cast<int>(page.Width() / one) : 1;
    while (most > 1 && page.TextWidth(std::string(static_cast<std::size_t>(most), '0')) > page.Width())
        --most;
    return std::max(1, most);
}

std::string Rule(const PageWriter& page, char character) {
    return std::string(static_cast<std::size_t>(Capacity(page)), character);
}

std::vector<std::string> Wrapped(std::string_view text, int most) {
    std::vector<std::string> lines;
    // Each step looks at one line's worth, so that a text of any length is cut in one walk.
    for (std::size_t cut = BytesOf(text, most); cut < text.size(); cut = BytesOf(text, most)) {
        const std::size_t blank = text.substr(0, cut + 1).find_last_of(" \t");
        if (blank != std::string_view::npos && blank > 0) cut = blank;
        lines.emplace_back(text.substr(0, cut));
        text.remove_prefix(cut);
        text.remove_prefix(std::min(text.size(), text.find_first_not_of(' ')));
    }
    lines.emplace_back(text);
    return lines;
}

std::string Ends(const std::string& text, int most) {
    const int characters = Characters(text);
    if (characters <= most) return text;
    const int head = (most - 3) / 2, tail = most - 3 - head;
    return text.substr(0, BytesOf(text, head)) + "..." + text.substr(BytesOf(text, characters - tail));
}

void PrintSignature(Sheets& page) {
    constexpr float Size = 12;
    page.FontSize(Size);
    const float line = page.LineHeight();
    // Room to write above it, but rather little than a sheet of its own.
    if (page.CurrentY() + 1.5f * line > page.Height()) page.NewPage();
    page.FontSize(Size);
    page.MoveTo(0, std::min(page.CurrentY() + 2 * line, page.Height() - line));
    page.Print("Date: ______________   Signature: ______________________");
}

void PrintField(Sheets& page, const std::string& label, const std::string& value, float step) {
    const auto takeRoom = [&page] {
        if (page.CurrentY() + page.LineHeight() > page.Height()) page.NewPage();
    };
    takeRoom();
    const float top = page.CurrentY();
    // A label that fills its field is set off from its value all the same.
    const std::string field = Characters(label) < LabelField ? Padded(label, LabelField) : label + " ";
    const int room = std::max(8, Capacity(page) - Characters(field));
    std::string before = field;
    for (const std::string& line : Wrapped(WithTabsAsFields(value), room)) {
        takeRoom();
        page.Print(before + line);
        before = std::string(static_cast<std::size_t>(Characters(field)), ' ');
    }
    page.MoveTo(0, page.CurrentY() < top ? page.CurrentY() : std::max(page.CurrentY(), top + step));
}

}  // namespace kelvo
