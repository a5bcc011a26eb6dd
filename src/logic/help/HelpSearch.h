#pragma once

#include <string>
#include <vector>

#include "help/HelpSheet.h"

namespace kelvo {

/// A place where all words of a search stand.
struct HelpHit {
    HelpPage page;
    std::string where;    ///< "Selectivity", "Selectivity, note pad"
    std::string excerpt;  ///< the paragraph, or the part of it around the first word
};

/// Searches the advice of all sheets, the three documents and all note pads, as they were when it was made.
class HelpSearch {
 public:
    static constexpr std::size_t MostHits = 200, LongestExcerpt = 160;

    /// Texts that cannot be read are left out.
    explicit HelpSearch(const std::string& helpPath);

    /// Paragraphs, and lines of notes, that hold every word of the query as a part, whatever its case. Sheets first,
    /// then documents, then notes; none for an empty query.
    std::vector<HelpHit> Find(const std::string& query) const;

 private:
    struct Entry {
        HelpPage page;
        std::string where, text, folded;
    };
    void Add(const HelpPage& page, const std::string& where, const std::string& text);

    std::vector<Entry> entries_;
};

/// Text in lower case, the letters of Latin-1 included, at the same length in bytes. "ÄRGER" -> "ärger".
std::string Folded(const std::string& utf8);

}  // namespace kelvo
