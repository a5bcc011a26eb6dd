#include "batch/Rows.h"

#include <algorithm>
#include <limits>

#include "batch/Report.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<double> NumberOf(std::string_view text) {
    text = Trimmed(text);
    return IsNumber(text) ? std::optional(Val(text)) : std::nullopt;
}

std::string WhyNoNumber(std::string_view text) {
    constexpr std::size_t Shown = 40;
    text = Trimmed(text);
    if (text.empty()) return "there is no number";
    std::string why = "'" + Visible(text.substr(0, Shown));
    why += text.size() > Shown ? "...' is no number" : "' is no number";
    std::string point(text);
    std::replace(point.begin(), point.end(), ',', '.');
    return point != text && IsNumber(point) ? why + "; the decimal mark is a point" : why;
}

bool IsUtf16(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) return true;
    const auto zero = [&](std::size_t i) { return i < bytes.size() && bytes[i] == '\0'; };
    return zero(0) != zero(1) && bytes.size() > 1 && (bytes.size() < 4 || (zero(0) == zero(2) && zero(1) == zero(3)));
}

std::optional<std::string_view> LineReader::Next() {
    in_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    auto length = static_cast<std::size_t>(in_.gcount());
    tooLong_ = in_.fail() && length == LongestLine;
    if (tooLong_) {
        in_.clear();
        in_.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    } else if (!in_) {
        return std::nullopt;
    } else if (!in_.eof()) {
        --length;  // the line end counts as read
    }
    ++number_;
    std::string_view line(buffer_.data(), length);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (number_ == 1 && line.starts_with(ByteOrderMark)) line.remove_prefix(ByteOrderMark.size());
    return line;
}

char SeparatorOf(std::string_view line) {
    for (const char separator : {'\t', ';'})
        if (line.find(separator) != std::string_view::npos) return separator;
    return ',';
}

void SplitFields(std::string_view line, char separator, std::vector<std::string>& fields) {
    fields.clear();
    for (;;) {
        std::string_view rest = line.substr(std::min(line.find_first_not_of(' '), line.size()));
        if (!rest.starts_with('"')) {
            const std::size_t end = std::min(line.find(separator), line.size());
            fields.emplace_back(Trimmed(line.substr(0, end)));
            if (end == line.size()) return;
            line.remove_prefix(end + 1);
            continue;
        }
        std::string& field = fields.emplace_back();
        rest.remove_prefix(1);
        while (!rest.empty()) {
            const bool quote = rest.front() == '"';
            const bool doubled = rest.starts_with("\"\"");
            if (quote && !doubled) break;
            field += rest.front();
            rest.remove_prefix(doubled ? 2 : 1);
        }
        const std::size_t end = std::min(rest.find(separator), rest.size());
        if (end == rest.size()) return;
        line = rest.substr(end + 1);
    }
}

RowsHead HeadOf(std::string_view firstLine) {
    RowsHead head;
    head.separator = SeparatorOf(firstLine);
    SplitFields(firstLine, head.separator, head.fields);
    head.named = !std::all_of(head.fields.begin(), head.fields.end(),
                              [](const std::string& field) { return field.empty() || NumberOf(field); });
    return head;
}

std::optional<std::size_t> ColumnNamed(const RowsHead& head, const std::vector<std::string>& names) {
    if (!head.named) return std::nullopt;
    for (const std::string& name : names)
        for (std::size_t i = 0; i < head.fields.size(); ++i)
            if (EqualNoCase(head.fields[i], name)) return i;
    return std::nullopt;
}

}  // namespace kelvo
