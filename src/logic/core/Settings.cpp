#include "core/Settings.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <set>

#include "text/CodePage.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr std::size_t LongestValue = 254;
constexpr std::size_t LargestFile = std::size_t{64} << 20;
constexpr std::string_view Blanks = " \t";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

bool IsLineBreak(char c) {
    return c == '\n' || c == '\r';
}

/// One line of a file, by the places of its bytes.
struct Line {
    std::size_t start = 0;
    std::size_t end = 0;   ///< before its LF, CR LF or CR
    std::size_t next = 0;  ///< behind it
};

Line LineAt(std::string_view bytes, std::size_t start) {
    Line line{start, start, start};
    while (line.end < bytes.size() && !IsLineBreak(bytes[line.end]))
        ++line.end;
    line.next = std::min(line.end + (bytes.substr(line.end).starts_with("\r\n") ? 2 : 1), bytes.size());
    return line;
}

std::string_view TextOf(std::string_view bytes, const Line& line) {
    return bytes.substr(line.start, line.end - line.start);
}

/// Name of the section that a line opens, none for any other line.
std::optional<std::string_view> SectionOf(std::string_view line) {
    line = TrimBlanks(line);
    if (!line.starts_with('[')) return std::nullopt;
    const std::size_t end = line.find(']');
    if (end == std::string_view::npos) return std::nullopt;
    return TrimBlanks(line.substr(1, end - 1));
}

/// Whether only blanks stand between `at` and the line break, or the top of the file, before it.
bool OpensLine(std::string_view bytes, std::size_t top, std::size_t at) {
    while (at > top && Blanks.find(bytes[at - 1]) != std::string_view::npos)
        --at;
    return at == top || IsLineBreak(bytes[at - 1]);
}

/// Start of the line after the head of the first section of that name, none without it. Goes from bracket to
/// bracket, since in a large file almost no line is a head.
std::optional<std::size_t> SectionStart(std::string_view bytes, std::string_view section) {
    const std::size_t top = bytes.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
    for (std::size_t at = bytes.find('[', top); at != std::string_view::npos; at = bytes.find('[', at + 1)) {
        if (!OpensLine(bytes, top, at)) continue;
        const Line line = LineAt(bytes, at);
        const auto name = SectionOf(TextOf(bytes, line));
        if (name && EqualNoCase(*name, section)) return line.next;
    }
    return std::nullopt;
}

/// Where a key stands, or where it would be put.
struct Place {
    bool found = false;
    std::size_t valueStart = 0, valueEnd = 0;  ///< behind the `=`, before the line end; when found
    std::size_t sectionEnd = 0;                ///< behind the last line of the section that is not blank
};

Place FindKey(std::string_view bytes, std::size_t sectionStart, std::string_view key) {
    Place place;
    place.sectionEnd = sectionStart;
    for (Line line = LineAt(bytes, sectionStart); line.start < bytes.size(); line = LineAt(bytes, line.next)) {
        const std::string_view text = TextOf(bytes, line);
        const std::string_view core = TrimBlanks(text);
        if (core.empty()) continue;
        if (SectionOf(core)) break;
        place.sectionEnd = line.next;
        const std::size_t equals = text.find('=');
        if (core.front() == ';' || equals == std::string_view::npos) continue;
        if (!EqualNoCase(TrimBlanks(text.substr(0, equals)), key)) continue;
        place.found = true;
        place.valueStart = line.start + equals + 1;
        place.valueEnd = line.end;
        break;
    }
    return place;
}

bool HasQuotesAround(std::string_view value) {
    return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
}

/// The value that the text behind a `=` stands for.
std::string_view ParseValue(std::string_view text) {
    text = TrimBlanks(text);
    if (HasQuotesAround(text)) text = text.substr(1, text.size() - 2);
    return text.substr(0, LongestValue);
}

/// The text behind a `=` that stands for a value. Quotes that belong to the value would fall away on reading, so
/// they get a pair around them.
std::string FormatValue(const std::string& value) {
    return HasQuotesAround(TrimBlanks(value)) ? '"' + value + '"' : value;
}

/// LF for a file that has nothing else, CR LF for any other.
std::string_view LineEndOf(std::string_view bytes) {
    const bool lineFeedsOnly = bytes.find('\n') != std::string_view::npos && bytes.find('\r') == std::string_view::npos;
    return lineFeedsOnly ? "\n" : "\r\n";
}

std::string WithSetting(const std::string& bytes, const std::string& section, const std::string& key,
                        const std::string& notation) {
    const std::string_view lineEnd = LineEndOf(bytes);
    const auto start = SectionStart(bytes, section);
    const Place place = start ? FindKey(bytes, *start, key) : Place{.sectionEnd = bytes.size()};
    if (place.found) return bytes.substr(0, place.valueStart) + notation + bytes.substr(place.valueEnd);
    std::string out = bytes.substr(0, place.sectionEnd);
    if (!out.empty() && !IsLineBreak(out.back())) out += lineEnd;
    if (!start) out.append("[").append(section).append("]").append(lineEnd);
    out.append(key).append("=").append(notation).append(lineEnd);
    return out.append(bytes, place.sectionEnd);
}

/// Content of the file, empty when there is none. @throws RuntimeError when there is one that cannot be read.
std::string ContentToChange(const std::string& file) {
    try {
        return ReadWholeFile(file, LargestFile);
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::FileNotFound) throw;
        return {};
    }
}

constexpr std::string_view Unwritable("\r\n\0", 3);

bool CanBeSection(std::string_view name) {
    return !name.empty() && name.find(']') == std::string_view::npos &&
           name.find_first_of(Unwritable) == std::string_view::npos;
}

bool CanBeKey(std::string_view name) {
    return !name.empty() && name.front() != ';' && name.front() != '[' && name.find('=') == std::string_view::npos &&
           name.find_first_of(Unwritable) == std::string_view::npos;
}

}  // namespace

std::string ReadSetting(std::string_view section, std::string_view key, const std::string& file) {
    // The first start has no settings: that is no failure, and asked for without one.
    if (!FileExists(file)) return {};
    try {
        const std::string bytes = ReadWholeFile(file, LargestFile);
        const auto start = SectionStart(bytes, TrimBlanks(ToCodePage(section)));
        if (!start) return {};
        const Place place = FindKey(bytes, *start, TrimBlanks(ToCodePage(key)));
        if (!place.found) return {};
        return FromCodePage(
            ParseValue(std::string_view(bytes).substr(place.valueStart, place.valueEnd - place.valueStart)));
    } catch (const RuntimeError&) {
        return {};
    }
}

std::vector<SettingEntry> ListSettings(std::string_view bytes) {
    std::vector<SettingEntry> entries;
    std::set<std::string> sections;
    for (std::size_t at = bytes.find('['); at != std::string_view::npos; at = bytes.find('[', at + 1)) {
        if (!OpensLine(bytes, bytes.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0, at)) continue;
        const Line head = LineAt(bytes, at);
        const auto name = SectionOf(TextOf(bytes, head));
        if (!name || !sections.insert(Upper(*name)).second) continue;
        std::set<std::string> keys;
        for (Line line = LineAt(bytes, head.next); line.start < bytes.size(); line = LineAt(bytes, line.next)) {
            const std::string_view core = TrimBlanks(TextOf(bytes, line));
            if (SectionOf(core)) break;
            const std::size_t equals = core.find('=');
            if (core.starts_with(';') || equals == std::string_view::npos) continue;
            const std::string_view key = TrimBlanks(core.substr(0, equals));
            if (!keys.insert(Upper(key)).second) continue;
            entries.push_back(
                {FromCodePage(*name), FromCodePage(key), FromCodePage(ParseValue(core.substr(equals + 1)))});
        }
    }
    return entries;
}

bool WriteSetting(std::string_view section, std::string_view key, std::string_view value, const std::string& file) {
    section = TrimBlanks(section);
    key = TrimBlanks(key);
    if (!CanBeSection(section) || !CanBeKey(key)) return false;
    if (value.find_first_of(Unwritable) != std::string_view::npos) return false;
    try {
        const std::string bytes = ContentToChange(file);
        const std::string changed =
            WithSetting(bytes, ToCodePage(section), ToCodePage(key), FormatValue(ToCodePage(value)));
        if (changed != bytes) ReplaceWholeFile(file, changed);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace kelvo
