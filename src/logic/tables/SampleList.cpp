#include "tables/SampleList.h"

#include <algorithm>
#include <array>
#include <utility>

#include "text/Number.h"
#include "text/UserText.h"

namespace kelvo {
namespace {

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// A field without the quotes around it; doubled ones in it are single.
std::string Unquoted(std::string_view field) {
    field = Trimmed(field);
    if (field.size() < 2 || field.front() != '"' || field.back() != '"') return std::string(field);
    std::string text;
    for (std::size_t i = 1; i + 1 < field.size(); ++i) {
        text += field[i];
        if (field[i] == '"' && field[i + 1] == '"') ++i;
    }
    return text;
}

/// Takes the field in front off a line. What parts fields is text between quotes.
std::string_view NextField(std::string_view& line, char separator) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') quoted = !quoted;
        if (quoted || line[i] != separator) continue;
        const std::string_view field = line.substr(0, i);
        line.remove_prefix(i + 1);
        return field;
    }
    return std::exchange(line, {});
}

char SeparatorOf(std::string_view line) {
    for (const char separator : {'\t', ';'})
        if (line.find(separator) != std::string_view::npos) return separator;
    return ',';
}

/// Whether the first line names the columns instead of a sample.
bool IsHead(const std::string& name) {
    static constexpr std::array Heads = {"SAMPLE", "SAMPLE NUMBER", "SAMPLE NO.", "SAMPLES", "NAME",
                                         "ID",     "NO.",           "NUMBER"};
    const std::string upper = Upper(name);
    return std::any_of(Heads.begin(), Heads.end(), [&](const char* head) { return upper == head; });
}

}  // namespace

std::string SampleList::Take(std::string_view bytes) {
    const std::string text = FromUserText(bytes);
    std::string_view rest = text;
    std::vector<std::string> names;
    bool first = true;
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (Trimmed(line).empty()) continue;
        const std::string where = "line " + std::to_string(number) + ": ";
        const char separator = SeparatorOf(line);
        std::string name = Unquoted(NextField(line, separator));
        const std::string count = Unquoted(NextField(line, separator));
        if (std::exchange(first, false) && IsHead(name)) continue;
        if (name.find('\0') != std::string::npos) return where + "this is no text";
        if (name.empty()) return where + "a sample without a number";
        // A TAB parts the cells of a row.
        std::replace(name.begin(), name.end(), '\t', ' ');
        if (name.size() > LongestName) return where + "a number of more than 64 characters";
        const double times = count.empty() ? 1 : IsNumber(count) ? Val(count) : 0;
        if (!(times >= 1) || times > MostReplicates || times != static_cast<int>(times))
            return std::string(where).append("\"").append(count).append("\" is no number of replicates, 1 to 99");
        if (names.size() + static_cast<std::size_t>(times) > MostRows) return where + "more than 100000 rows";
        names.insert(names.end(), static_cast<std::size_t>(times), name);
    }
    if (names.empty()) return "it holds no samples";
    names_ = std::move(names);
    next_ = 0;
    return {};
}

void SampleList::Skip() {
    for (const std::string name = Next(); !Done() && names_[next_] == name;)
        ++next_;
}

/// "A7 (2 of 3)", the place among rows of one name that follow each other.
std::string SampleList::PlaceOf(std::size_t at) const {
    std::size_t from = at, to = at;
    while (from > 0 && names_[from - 1] == names_[at])
        --from;
    while (to + 1 < names_.size() && names_[to + 1] == names_[at])
        ++to;
    if (from == to) return names_[at];
    return names_[at] + " (" + std::to_string(at - from + 1) + " of " + std::to_string(to - from + 1) + ")";
}

std::string SampleList::Line() const {
    if (Empty()) return {};
    if (Done()) return "The list of samples is done.";
    const std::size_t left = names_.size() - next_;
    return "Next sample: " + PlaceOf(next_) + "; " + std::to_string(left) + (left == 1 ? " row left" : " rows left");
}

std::vector<std::string> SampleList::Left() const {
    std::vector<std::string> left;
    for (std::size_t i = next_; i < names_.size(); ++i)
        left.push_back(PlaceOf(i));
    return left;
}

}  // namespace kelvo
