#include <gtest/gtest.h>

#include <filesystem>

#include "help/HelpSearch.h"
#include "help/TextBlocks.h"
#include "support/SourceDir.h"
#include "text/CodePage.h"
#include "text/Files.h"
#include "text/ScratchFolder.h"

namespace kelvo {
namespace {

using Kind = TextBlock::Kind;

TEST(TextBlocks, PlainTextIsSetOut) {
    const std::string full(60, 'x');
    const std::string joined = full + "\n" + full + "\nend\nnext";
    const std::tuple<const char*, const char*, std::vector<TextBlock>> rows[] = {
        {"nothing", "", {}},
        {"title and heading", "A\n===\nB\n---\nc", {{Kind::Title, "A"}, {Kind::Heading, "B"}, {Kind::Paragraph, "c"}}},
        {"two dashes are no rule", "A\n--\n", {{Kind::Paragraph, "A"}, {Kind::Paragraph, "--"}}},
        {"a mixed rule is none", "A\n-=-\n", {{Kind::Paragraph, "A"}, {Kind::Paragraph, "-=-"}}},
        {"full lines are joined, short ones end",
         joined.c_str(),
         {{Kind::Paragraph, full + " " + full + " end"}, {Kind::Paragraph, "next"}}},
        {"short lines stay", "one\ntwo", {{Kind::Paragraph, "one"}, {Kind::Paragraph, "two"}}},
        {"list", "- one\n  more\n- two\nthree", {{Kind::Item, "one more"}, {Kind::Item, "two three"}}},
        {"table keeps its blanks", "    a   b\n    c   d\n", {{Kind::Table, "    a   b"}, {Kind::Table, "    c   d"}}},
        {"table after a list and a blank", "- one\n\n  x  y", {{Kind::Item, "one"}, {Kind::Table, "  x  y"}}},
        {"indented by a tab", "\tx\n", {{Kind::Table, "\tx"}}},
    };
    for (const auto& [name, text, blocks] : rows)
        EXPECT_EQ(SetOut(text), blocks) << name;
}

TEST(TextBlocks, LinesOfASheetAreJoinedBetweenBlanks) {
    const std::vector<HelpLine> lines = {{"a  b"}, {"c"}, {""},    {""},        {"H", true},
                                         {"- d"},  {"e"}, {"- f"}, {"I", true}, {"g"}};
    EXPECT_EQ(SetOut(lines, 0, 99), (std::vector<TextBlock>{{Kind::Paragraph, "a  b c"},
                                                            {Kind::Heading, "H"},
                                                            {Kind::Item, "d e"},
                                                            {Kind::Item, "f"},
                                                            {Kind::Heading, "I"},
                                                            {Kind::Paragraph, "g"}}));
    EXPECT_EQ(SetOut(lines, 1, 2), (std::vector<TextBlock>{{Kind::Paragraph, "c"}}));
}

/// The installed texts: in the code page, with headings, about two pages, no line that leaves its column.
TEST(HelpFiles, InstalledTextsAreWhole) {
    for (const HelpDocument& document : HelpDocuments()) {
        SCOPED_TRACE(document.file);
        const std::string bytes = ReadWholeFile(test::SourceDir() + "packaging/" + document.file);
        EXPECT_EQ(ToCodePage(FromCodePage(bytes)), bytes);
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\r'), std::count(bytes.begin(), bytes.end(), '\n'));
        const auto blocks = SetOut(ReadHelpText(test::SourceDir() + "packaging/" + document.file));
        EXPECT_EQ(blocks.front().kind, Kind::Title);
        const auto headings =
            std::count_if(blocks.begin(), blocks.end(), [](const auto& b) { return b.kind == Kind::Heading; });
        EXPECT_GE(headings, 6);
    }
}

class HelpSearchTest : public testing::Test {
 protected:
    test::ScratchFolder folder;
};

TEST_F(HelpSearchTest, FindsAllWordsInSheetsDocumentsAndNotes) {
    folder.Put("info3.txt", "Z\xFCrich water, 10 mL\r\nsecond line\r\n");
    folder.Put("PHINTRO.TXT", "Title\r\n=====\r\nborax and phosphate\r\n");
    folder.Put("info5.txt", std::string("\0binary", 7));
    std::string many;
    for (int i = 0; i < 300; ++i)
        many += "tap water\r\n";
    folder.Put("info6.txt", many);
    const HelpSearch search(folder.Path());
    // the least and the most hits, where the first one is
    const std::tuple<const char*, std::size_t, std::size_t, const char*> rows[] = {
        {"", 0, 0, ""},
        {"  ", 0, 0, ""},
        {"zürich", 1, 1, "Sample Addition, note pad"},
        {"ZÜRICH 10", 1, 1, "Sample Addition, note pad"},
        {"zürich second", 0, 0, ""},
        {"borax", 1, 1, "Introduction to pH measurement"},
        {"must be absent", 1, 1, "Selectivity"},
        {"thiourea", 1, 1, "pH: measurement and care of electrodes"},
        {"storage of combination", 1, 1, "pH: measurement and care of electrodes"},
        {"ionic strength", 4, 20, "Calibration: the setup"},
        {"water", HelpSearch::MostHits, HelpSearch::MostHits, "Direct Potentiometry"},
    };
    for (const auto& [query, least, most, where] : rows) {
        const auto hits = search.Find(query);
        EXPECT_TRUE(hits.size() >= least && hits.size() <= most) << query << ": " << hits.size();
        EXPECT_EQ(hits.empty() ? "" : hits.front().where, where) << query;
    }
    const HelpHit note = search.Find("zürich").front();
    EXPECT_EQ(note.page.topic, 3);
    EXPECT_EQ(note.excerpt, "Zürich water, 10 mL");
    EXPECT_EQ(search.Find("borax").front().page.file, "PHINTRO.TXT");
}

TEST_F(HelpSearchTest, ExcerptOfALongNoteIsCutBetweenLetters) {
    std::string line(400, '\xE4');
    folder.Put("info1.txt", line + "needle" + line);
    const auto hits = HelpSearch(folder.Path()).Find("needle");
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_NE(hits[0].excerpt.find("äneedleä"), std::string::npos);
    EXPECT_TRUE(hits[0].excerpt.starts_with("… ä") && hits[0].excerpt.ends_with("ä …")) << hits[0].excerpt;
    EXPECT_LE(hits[0].excerpt.size(), HelpSearch::LongestExcerpt + 8);
}

TEST(HelpSearch, FoldingKnowsTheLettersOfLatin1) {
    EXPECT_EQ(Folded("ABZ [ÄÖÜÞ] × ÷ß€"), "abz [äöüþ] × ÷ß€");
}

}  // namespace
}  // namespace kelvo
