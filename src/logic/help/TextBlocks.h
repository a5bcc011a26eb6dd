#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "help/HelpTexts.h"

namespace kelvo {

/// A piece of a text that is set out for reading.
struct TextBlock {
    enum class Kind {
        Title,      ///< a line with a rule of "=" below it
        Heading,    ///< a line with a rule of "-" below it, or one marked so
        Paragraph,  ///< lines joined by a blank, to be broken anew where it is shown
        Item,       ///< of a list: begun with "- "
        Table,      ///< an indented line, its blanks kept
    };
    Kind kind = Kind::Paragraph;
    std::string text;
    bool operator==(const TextBlock&) const = default;
};

/// Lines `from` to `to` (not included) as headings, points ("- one") and paragraphs; empty lines part paragraphs.
std::vector<TextBlock> SetOut(const std::vector<HelpLine>& lines, std::size_t from, std::size_t to);

/// A plain text as the introductions are written. Lines of a paragraph are joined; a line of less than 50 bytes was
/// ended on purpose and is not joined to the next, so that a text of someone who knows no marks keeps its lines.
std::vector<TextBlock> SetOut(const std::string& text);

}  // namespace kelvo
