#include "help/HelpSearch.h"

#include <algorithm>
#include <set>
#include <sstream>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

std::vector<std::string> WordsOf(const std::string& query) {
    std::vector<std::string> words;
    std::istringstream stream(Folded(query));
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

bool InsideCharacter(const std::string& text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

/// The text when it is short, else the part around `at`, cut between characters, with dots where something is missing.
std::string Excerpt(const std::string& text, std::size_t at) {
    if (text.size() <= HelpSearch::LongestExcerpt) return text;
    constexpr std::size_t Before = HelpSearch::LongestExcerpt / 3;
    std::size_t from = at > Before ? at - Before : 0;
    std::size_t to = std::min(text.size(), from + HelpSearch::LongestExcerpt);
    while (InsideCharacter(text, from))
        ++from;
    while (InsideCharacter(text, to))
        --to;
    return (from > 0 ? "… " : "") + text.substr(from, to - from) + (to < text.size() ? " …" : "");
}

}  // namespace

std::string Folded(const std::string& utf8) {
    std::string folded = utf8;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (folded[i] >= 'A' && folded[i] <= 'Z') folded[i] = static_cast<char>(folded[i] + ('a' - 'A'));
        // C3 80 to C3 9E are the capitals of Latin-1, their small letters 20 further on; C3 97 is the sign of times.
        if (i == 0 || folded[i - 1] != '\xC3') continue;
        const auto second = static_cast<unsigned char>(folded[i]);
        if (second >= 0x80 && second <= 0x9E && second != 0x97) folded[i] = static_cast<char>(second + 0x20);
    }
    return folded;
}

HelpSearch::HelpSearch(const std::string& helpPath) {
    for (const HelpSheetRow& row : HelpSheets()) {
        const auto& lines = HelpLines(row.topic, row.step);
        for (const TextBlock& block : SetOut(lines, 0, lines.size()))
            Add({row.topic, row.step, {}}, row.name, block.text);
    }
    for (const HelpDocument& document : HelpDocuments()) {
        try {
            for (const TextBlock& block : SetOut(ReadHelpText(helpPath + document.file)))
                Add({-1, 0, document.file}, document.name, block.text);
        } catch (const RuntimeError&) {
            continue;
        }
    }
    std::set<std::string> read;
    for (const HelpSheetRow& row : HelpSheets()) {
        if (row.note[0] == '\0' || !read.insert(row.note).second) continue;
        std::istringstream note(NotePad(helpPath + row.note).Text());
        for (std::string line; std::getline(note, line);)
            Add({row.topic, row.step, {}}, std::string(row.name) + ", note pad", line);
    }
}

void HelpSearch::Add(const HelpPage& page, const std::string& where, const std::string& text) {
    if (!text.empty()) entries_.push_back({page, where, text, Folded(text)});
}

std::vector<HelpHit> HelpSearch::Find(const std::string& query) const {
    const std::vector<std::string> words = WordsOf(query);
    std::vector<HelpHit> hits;
    if (words.empty()) return hits;
    for (const Entry& entry : entries_) {
        const bool all = std::all_of(words.begin(), words.end(), [&](const std::string& word) {
            return entry.folded.find(word) != std::string::npos;
        });
        if (!all) continue;
        hits.push_back({entry.page, entry.where, Excerpt(entry.text, entry.folded.find(words.front()))});
        if (hits.size() == MostHits) break;
    }
    return hits;
}

}  // namespace kelvo
