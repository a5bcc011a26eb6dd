#include "help/NotePad.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "app/AppState.h"
#include "help/HelpSheet.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo {
namespace {

using test::ScriptedPrompts;

class NotePadTest : public testing::Test {
 protected:
    std::string Path() const { return folder / "info2.txt"; }
    test::ScratchFolder folder;
    ScriptedPrompts prompts;
};

/// What a file holds, what the pad shows, and what stands in the file when a word has been added at the end.
TEST_F(NotePadTest, TextsGoThereAndBack) {
    const std::tuple<const char*, std::string, std::string, std::string> rows[] = {
        {"plain", "one\r\ntwo\r\n", "one\ntwo", "one\r\ntwo!\r\n"},
        {"no line end at the end", "one\r\ntwo", "one\ntwo", "one\r\ntwo!\r\n"},
        {"LF alone", "one\ntwo\n", "one\ntwo", "one\r\ntwo!\r\n"},
        {"CR alone", "one\rtwo\r", "one\ntwo", "one\r\ntwo!\r\n"},
        {"blank lines", "\r\n\r\none\r\n\r\n", "\n\none\n", "\r\n\r\none\r\n!\r\n"},
        {"empty", "", "", "!\r\n"},
        {"letters of the code page", "\x80 5, \xE4\xA0x\r\n", "€ 5, ä\u00A0x", "€ 5, ä\u00A0x!\r\n"},
        {"UTF-8, with its mark", "\xEF\xBB\xBF−1 Ω → ≥\r\n", "−1 Ω → ≥", "−1 Ω → ≥!\r\n"},
        {"tab and form feed", "a\tb\fc\r\n", "a\tb\fc", "a\tb\fc!\r\n"},
    };
    for (const auto& [name, file, text, savedAs] : rows) {
        SCOPED_TRACE(name);
        folder.Put("info2.txt", file);
        NotePad pad(Path());
        EXPECT_TRUE(pad.Writable());
        EXPECT_EQ(pad.Text(), text);
        EXPECT_EQ(pad.Save(pad.Text(), prompts), SaveOutcome::Saved);
        EXPECT_EQ(folder.Get("info2.txt"), file) << "an untouched file is not written";
        EXPECT_EQ(pad.Save(text + "!", prompts), SaveOutcome::Saved);
        EXPECT_EQ(folder.Get("info2.txt"), savedAs);
        EXPECT_EQ(NotePad(Path()).Text(), text + "!");
    }
}

TEST_F(NotePadTest, MissingFileIsMadeOnSaving) {
    NotePad pad(Path());
    EXPECT_EQ(pad.Text(), "");
    EXPECT_EQ(pad.Save("", prompts), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("info2.txt"), "\r\n");
    EXPECT_EQ(NotePad(Path()).Text(), "");
    // A missing folder is no reason to trouble someone who has written nothing.
    NotePad nowhere(folder / "gone/info2.txt");
    EXPECT_EQ(nowhere.Save("", prompts), SaveOutcome::Saved);
}

/// Files that cannot be shown answer with a word, cannot be written to, and stay as they are.
TEST_F(NotePadTest, OddFilesAreLeftAlone) {
    const auto write = [this](const std::string& bytes) { folder.Put("info2.txt", bytes); };
    const std::tuple<const char*, std::function<void()>, const char*> rows[] = {
        {"a folder", [this] { std::filesystem::create_directory(Path()); }, "cannot be read"},
        {"ten megabytes", [&] { write(std::string(10'000'000, 'x')); }, "is too long for a note"},
        {"a byte too long", [&] { write(std::string(NotePad::LongestFile + 1, 'x')); }, "is too long for a note"},
        {"not a text", [&] { write(std::string("PK\x03\x04 and so on", 14)); }, "is not a text"},
        {"a zero byte", [&] { write(std::string("a\0b", 3)); }, "is not a text"},
        {"a pipe", [this] { mkfifo(Path().c_str(), 0600); }, "cannot be read"},
        {"a link in a circle", [this] { std::filesystem::create_symlink("info2.txt", Path()); }, "cannot be read"},
    };
    for (const auto& [name, make, says] : rows) {
        SCOPED_TRACE(name);
        std::filesystem::remove_all(Path());
        make();
        const auto kind = std::filesystem::symlink_status(Path()).type();
        NotePad pad(Path());
        EXPECT_FALSE(pad.Writable());
        EXPECT_EQ(pad.Text(), "");
        EXPECT_NE(pad.Obstacle().find("info2.txt"), std::string::npos);
        EXPECT_NE(pad.Obstacle().find(says), std::string::npos) << pad.Obstacle();
        EXPECT_EQ(pad.Save("typed somehow", prompts), SaveOutcome::Saved);
        EXPECT_TRUE(pad.Keep("typed somehow"));
        EXPECT_EQ(std::filesystem::symlink_status(Path()).type(), kind);
    }
    std::filesystem::remove_all(Path());
    write(std::string(NotePad::LongestFile, 'x'));
    EXPECT_TRUE(NotePad(Path()).Writable());
}

constexpr const char* ChangedElsewhere =
    "info2.txt has been changed by another program while this sheet was open. Click on 'Yes' to replace it by the text "
    "of this sheet, click on 'No' to keep both, one below the other";

TEST_F(NotePadTest, TextChangedElsewhereIsNotOverwrittenInSilence) {
    // the file when the sheet, opened on "a", is left (none: deleted); the answer to the question; the file after Save
    // and after Keep
    const std::tuple<const char*, std::optional<std::string>, std::optional<bool>, std::string, std::string> rows[] = {
        {"replaced", "b\r\n", true, "mine\r\n", "b\r\n\r\nmine\r\n"},
        {"both kept", "\xB5\r\n", false, "µ\r\n\r\nmine\r\n", "µ\r\n\r\nmine\r\n"},
        {"both kept, no line end", "b", false, "b\r\n\r\nmine\r\n", "b\r\n\r\nmine\r\n"},
        {"the same text elsewhere", "mine\r\n", {}, "mine\r\n", "mine\r\n"},
        {"deleted elsewhere", {}, {}, "mine\r\n", "mine\r\n"},
        {"emptied elsewhere", "", false, "\r\nmine\r\n", "\r\nmine\r\n"},
        {"unchanged", "a\r\n", {}, "mine\r\n", "mine\r\n"},
    };
    for (const bool keep : {false, true}) {
        for (const auto& [name, meanwhile, answer, asked, kept] : rows) {
            SCOPED_TRACE(std::string(name) + (keep ? ", session ends" : ""));
            folder.Put("info2.txt", "a\r\n");
            NotePad pad(Path());
            if (meanwhile)
                folder.Put("info2.txt", *meanwhile);
            else
                std::filesystem::remove(Path());
            if (keep) {
                const auto unsaved = pad.Unsaved("mine");
                ASSERT_EQ(unsaved.size(), 1u);
                EXPECT_EQ(unsaved[0].bytes, kept);
                EXPECT_EQ(unsaved[0].file, Path());
                EXPECT_TRUE(pad.Keep("mine"));
                EXPECT_TRUE(pad.Unsaved("mine").empty());
            } else {
                if (answer) prompts.ExpectAsk(ChangedElsewhere, *answer);
                EXPECT_EQ(pad.Save("mine", prompts), SaveOutcome::Saved);
                EXPECT_TRUE(prompts.Done());
            }
            EXPECT_EQ(folder.Get("info2.txt"), keep ? kept : asked);
            // The pad knows the file as it stands now: the next save asks nothing.
            EXPECT_EQ(pad.Save("mine, more", prompts), SaveOutcome::Saved);
        }
    }
}

TEST_F(NotePadTest, FileMadeElsewhereMeanwhileIsNotEmptied) {
    NotePad pad(Path());
    folder.Put("info2.txt", "theirs\r\n");
    EXPECT_EQ(pad.Save("", prompts), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("info2.txt"), "theirs\r\n");
}

TEST_F(NotePadTest, FailedSaveIsToldAndCanBeGivenUpAtTheSecondTry) {
    AppState state;
    state.HelpPath = folder / "gone/";
    state.HelpTopic = 2;
    HelpSheet sheet(state, prompts);
    sheet.Open();
    const std::string error = "Error76Saving" + state.HelpPath + "info2.txt:Path not found.";
    constexpr const char* GiveUp = "The note has not been saved. Would you like to leave the sheet without it?";
    prompts.ExpectMessage(error);
    EXPECT_FALSE(sheet.Leave("typed"));
    prompts.ExpectMessage(error);
    prompts.ExpectAsk(GiveUp, false);
    EXPECT_FALSE(sheet.Leave("typed"));
    EXPECT_FALSE(sheet.Keep("typed"));
    prompts.ExpectMessage(error);
    prompts.ExpectAsk(GiveUp, true);
    EXPECT_TRUE(sheet.Leave("typed"));
    // With the folder back the same text is saved.
    std::filesystem::create_directory(state.HelpPath);
    EXPECT_TRUE(sheet.Leave("typed"));
    EXPECT_EQ(folder.Get("gone/info2.txt"), "typed\r\n");
}

TEST_F(NotePadTest, WithoutAStepThereIsHeadingAndPadOnly) {
    AppState state;
    state.HelpPath = folder.Path();
    state.HelpTopic = 7;
    HelpSheet sheet(state, prompts);
    sheet.Open();
    EXPECT_TRUE(sheet.First().empty());
    EXPECT_FALSE(sheet.IsDocument());
    EXPECT_FALSE(sheet.Pad().Writable());
    EXPECT_EQ(sheet.Pad().Text(), "");
    EXPECT_NE(sheet.Status(), "");
    EXPECT_TRUE(sheet.Leave("typed"));
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(NotePadTest, SecondSheetGoesOnWhereTheFirstEnds) {
    for (const HelpSheetRow& row : HelpSheets()) {
        AppState state;
        state.HelpTopic = 4;
        HelpSheet sheet(state, prompts), second(state, prompts);
        sheet.Show({row.topic, row.step, {}});
        sheet.LeavePlace();
        second.OpenAgain();
        EXPECT_EQ(second.Caption(), sheet.Caption());
        EXPECT_EQ(second.Second().empty(), !row.second) << row.name;
        const auto& lines = HelpLines(row.topic, row.step);
        std::string all, shown;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (row.second || i < 11)
                all += lines[i].text + (std::string_view(lines[i].text).starts_with("- ") ? 2 : 0);
        for (const auto& part : {sheet.First(), second.Second()})
            for (const TextBlock& block : part)
                shown += block.text;
        std::erase(all, ' ');
        std::erase(shown, ' ');
        EXPECT_EQ(shown, all) << row.name;
        EXPECT_EQ(state.SheetTopic, -1);
    }
}

TEST_F(NotePadTest, DocumentIsReadWholeOrToldMissing) {
    AppState state;
    state.HelpPath = folder.Path();
    state.HelpTopic = 2;
    folder.Put("iseintro.txt",
               "Title\r\n=====\r25 \xB0"
               "C\r\n");
    HelpSheet sheet(state, prompts);
    state.HelpFile = "ISEINTRO.TXT";
    sheet.Open();
    EXPECT_EQ(sheet.Caption(), "Introduction to ISE measurement");
    EXPECT_EQ(sheet.First(),
              (std::vector<TextBlock>{{TextBlock::Kind::Title, "Title"}, {TextBlock::Kind::Paragraph, "25 °C"}}));
    EXPECT_TRUE(sheet.Leave("nothing"));
    // Word of a document is taken once.
    sheet.Open();
    EXPECT_FALSE(sheet.IsDocument());
    state.HelpFile = "PHINTRO.TXT";
    prompts.ExpectMessage("Error53Opening" + folder.Path() + "PHINTRO.TXT:File not found.");
    sheet.Open();
    EXPECT_TRUE(sheet.First().empty());
    EXPECT_EQ(sheet.Caption(), "Introduction to pH measurement");
}

}  // namespace
}  // namespace kelvo
