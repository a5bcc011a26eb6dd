#include "help/TextBlocks.h"

#include <algorithm>
#include <sstream>

namespace kelvo {
namespace {

using Kind = TextBlock::Kind;

/// A line shorter than this many bytes was ended on purpose.
constexpr std::size_t FullLine = 50;

/// Whether the line is a rule of three or more of that character.
bool IsRule(const std::string& line, char mark) {
    return line.size() >= 3 && line.find_first_not_of(mark) == std::string::npos;
}

std::string Trimmed(const std::string& line) {
    const auto first = line.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return line.substr(first, line.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// Takes lines one by one; knows whether the next may go on with the block before it.
class Setter {
 public:
    void Blank() { open_ = false; }
    void Add(Kind kind, const std::string& text, bool open = true) {
        blocks.push_back({kind, text});
        open_ = open;
    }
    bool Open() const { return open_; }
    void GoOn(const std::string& text, bool open = true) {
        blocks.back().text += ' ' + text;
        open_ = open;
    }

    std::vector<TextBlock> blocks;

 private:
    bool open_ = false;
};

}  // namespace

std::vector<TextBlock> SetOut(const std::vector<HelpLine>& lines, std::size_t from, std::size_t to) {
    Setter setter;
    for (std::size_t i = from; i < std::min(to, lines.size()); ++i) {
        const std::string text = lines[i].text;
        if (text.empty())
            setter.Blank();
        else if (lines[i].heading)
            setter.Add(Kind::Heading, text, false);
        else if (text.starts_with("- "))
            setter.Add(Kind::Item, text.substr(2));
        else if (setter.Open())
            setter.GoOn(text);
        else
            setter.Add(Kind::Paragraph, text);
    }
    return setter.blocks;
}

std::vector<TextBlock> SetOut(const std::string& text) {
    const std::vector<std::string> lines = LinesOf(text);
    Setter setter;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        const std::string trimmed = Trimmed(line);
        const bool indented = line.starts_with(' ') || line.starts_with('\t');
        if (trimmed.empty()) {
            setter.Blank();
        } else if (i + 1 < lines.size() && (IsRule(lines[i + 1], '=') || IsRule(lines[i + 1], '-'))) {
            setter.Add(lines[i + 1][0] == '=' ? Kind::Title : Kind::Heading, trimmed, false);
            ++i;
        } else if (trimmed.starts_with("- ")) {
            setter.Add(Kind::Item, Trimmed(trimmed.substr(2)));
        } else if (indented && !(setter.Open() && setter.blocks.back().kind == Kind::Item)) {
            setter.Add(Kind::Table, line, false);
        } else if (setter.Open()) {
            setter.GoOn(trimmed, setter.blocks.back().kind == Kind::Item || line.size() >= FullLine);
        } else {
            setter.Add(Kind::Paragraph, trimmed, line.size() >= FullLine);
        }
    }
    return setter.blocks;
}

}  // namespace kelvo
