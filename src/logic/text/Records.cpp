#include "text/Records.h"

#include "text/CodePage.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr char Quote = '"';
constexpr std::string_view LineEnd = "\r\n";

constexpr bool EndsLine(char c) {
    return c == '\n' || c == '\r';
}

/// What `text` holds from its head on, up to the first character that `stops`; both lose it.
template <typename Stops>
std::string_view TakeUpTo(std::string_view& text, Stops stops) {
    std::size_t at = 0;
    while (at < text.size() && !stops(text[at]))
        ++at;
    const std::string_view head = text.substr(0, at);
    text.remove_prefix(at);
    return head;
}

/// Takes away what ended a field: a comma, or a line end in any of its forms.
void PassEnd(std::string_view& rest) {
    if (rest.empty()) return;
    rest.remove_prefix(rest.starts_with(LineEnd) ? LineEnd.size() : 1);
}

void NeedMore(std::string_view rest) {
    if (rest.empty()) throw RuntimeError(ErrorNumber::InputPastEnd);
}

/// Whether the reader's rule would give back the text when it stands between quotes as it is.
bool ReadsBackBetweenQuotes(std::string_view text) {
    bool outside = false;
    for (const char c : text) {
        if (c == Quote) outside = !outside;
        if (c == ',' && outside) return false;
    }
    return text.find("\"\"") == std::string_view::npos;
}

std::string DoubleQuotes(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == Quote) out += Quote;
        out += c;
    }
    return out;
}

/// Each pair of quotes as one.
std::string SingleQuotes(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        out += text[at];
        if (text.substr(at).starts_with("\"\"")) ++at;
    }
    return out;
}

std::string_view WithoutBlanksAround(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// A field of the Input rule, in bytes of the file.
std::string TakeField(std::string_view& rest) {
    NeedMore(rest);
    bool quoted = false;
    const std::string_view field = TakeUpTo(rest, [&quoted](char c) {
        if (c == Quote) quoted = !quoted;
        return EndsLine(c) || (c == ',' && !quoted);
    });
    PassEnd(rest);
    const std::string_view core = WithoutBlanksAround(field);
    const bool surrounded = core.size() >= 2 && core.front() == Quote && core.back() == Quote;
    return surrounded ? SingleQuotes(core.substr(1, core.size() - 2)) : std::string(field);
}

}  // namespace

void RecordWriter::Write(float value) {
    Print(TrimStr(value));
}

void RecordWriter::Write(std::string_view text) {
    const std::string bytes = ToCodePage(text);
    for (const char c : bytes) {
        if (EndsLine(c)) throw RuntimeError(ErrorNumber::InvalidCall);
    }
    bytes_ += Quote;
    bytes_ += ReadsBackBetweenQuotes(bytes) ? bytes : DoubleQuotes(bytes);
    bytes_ += Quote;
    bytes_ += LineEnd;
}

void RecordWriter::Print(std::string_view line) {
    bytes_ += ToCodePage(line);
    bytes_ += LineEnd;
}

std::string RecordReader::Text() {
    return FromCodePage(TakeField(rest_));
}

float RecordReader::Number() {
    return ToSingle(Val(TakeField(rest_)));
}

int RecordReader::Whole() {
    return ToInt16(Val(TakeField(rest_)));
}

std::string RecordReader::Item() {
    NeedMore(rest_);
    TakeUpTo(rest_, [](char c) { return c != ' ' && c != '\t'; });
    const bool quoted = rest_.starts_with(Quote);
    if (quoted) rest_.remove_prefix(1);
    const std::string_view item =
        TakeUpTo(rest_, [quoted](char c) { return EndsLine(c) || c == (quoted ? Quote : ','); });
    if (quoted) TakeUpTo(rest_, [](char c) { return EndsLine(c) || c == ','; });
    PassEnd(rest_);
    return FromCodePage(item);
}

std::string RecordReader::Line() {
    NeedMore(rest_);
    const std::string_view line = TakeUpTo(rest_, EndsLine);
    PassEnd(rest_);
    return FromCodePage(line);
}

}  // namespace kelvo
