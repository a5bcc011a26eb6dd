#include <functional>

#include "support/Joined.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

class LogNavigator : public TableNavigator {
 public:
    std::string log;
    void HideTable() override { log += "hide "; }
    void CloseTable() override { log += "close "; }
    void ShowScreen(ScreenCode code) override { log += "show" + std::to_string(static_cast<int>(code)) + " "; }
    void ResumeLiveDisplay() override { log += "timer "; }
};

class TableScreenTest : public TableTest {
 protected:
    TableScreenTest() { logic.Attach(&screens); }
    void Measure() {
        AddSamples();
        state.TableOpen = 1;
    }
    void SaveAs(const std::string& name) {
        files.Expect(folder / name);
        EXPECT_EQ(logic.Save(), SaveOutcome::Saved);
    }
    void OpenFile() {
        folder.Put("OLD.TAB", Golden("RECORD.TAB"));
        files.Expect(folder / "OLD.TAB");
        logic.Open();
    }
    const std::string question = "Would you like to save the data table?";
    LogNavigator screens;
};

// A correction of the counts would change what stands in the grid after a look at a file.
TEST_F(TableScreenTest, BackAndCloseRestoreDifferently) {
    Measure();
    const auto head = table.txtData;
    OpenFile();
    EXPECT_EQ(logic.Shown().Cell(1, 1), "F - 0");
    logic.Back();
    EXPECT_EQ(Rows().size(), 3u) << "the two samples and the empty row";
    EXPECT_EQ(table.Label1[9], "Serial No. F123") << "without ISE here";

    for (int again = 0; again < 3; ++again) {
        OpenFile();
        logic.Close();
        EXPECT_EQ(Rows().size(), 4u) << "one empty row more";
    }
    EXPECT_EQ(Joined(logic.NextRowNumber(), logic.RowCount()), " 3|2") << "which is no sample";
    EXPECT_EQ(table.txtData, head) << "the working table keeps its own head, notes and date included";
    EXPECT_EQ(screens.log, "hide hide hide hide ");
}

// The file holds another ion's rows and another day's head; nothing of it may reach the samples, nor the other way.
TEST_F(TableScreenTest, TheTableMeasuredAndTheTableLookedAtNeverMix) {
    // what is done while the file is on show, and the cell of the first row on show afterwards
    const std::tuple<const char*, std::function<void()>, const char*> rows[] = {
        {"a second save goes to the same file, not to the one looked at",
         [&] {
             SaveAs("mine");
             EXPECT_EQ(folder.Get("MINE.tab"), Golden("SAMPLES.TAB"));
             EXPECT_EQ(logic.Save(), SaveOutcome::Saved);
             folder.Put("MINE.tab", folder.Get("MINE.tab~"));
         },
         "F - 0"},
        {"rows are kept in the samples' file",
         [&] {
             state.TableFile = folder / "MINE.tab";
             EXPECT_EQ(logic.KeepRows(), SaveOutcome::Saved);
         },
         "F - 0"},
        {"numbering and dropping the last sample",
         [&] {
             logic.AddRow(" 3\tof none");
             OpenFile();
             logic.DropRow();
             logic.NumberRow("Brook µ°");
             EXPECT_EQ(logic.NextRowNumber(), " 3");
             SaveAs("mine");
         },
         "F - 0"},
        {"a new sample takes the file's place on show",
         [&] {
             logic.AddRow(" 3\tof none");
             logic.DropRow();
             SaveAs("mine");
         },
         "Tap 1"},
        {"the way out saves the samples",
         [&] {
             prompts.ExpectAskToSave(question, true);
             files.Expect(folder / "mine");
             logic.Prompt();
         },
         "F - 0"},
        {"the frame of the table screen hides it",
         [&] {
             logic.CloseByFrame();
             SaveAs("mine");
         },
         "Tap 1"},
        {"another file, and one that cannot be read",
         [&] {
             OpenFile();
             files.Expect(folder / "NONE.TAB");
             prompts.ExpectMessage("Error53Saving" + folder / "NONE.TAB" + ":File not found.");
             logic.Open();
             SaveAs("mine");
         },
         ""},
    };
    for (const auto& [name, doing, shown] : rows) {
        SCOPED_TRACE(name);
        Measure();
        OpenFile();
        EXPECT_EQ(&logic.Current(), &table) << "a print is of the samples";
        doing();
        EXPECT_EQ(folder.Get("MINE.tab"), Golden("SAMPLES.TAB"));
        EXPECT_EQ(folder.Get("OLD.TAB"), Golden("RECORD.TAB"));
        EXPECT_EQ(logic.Shown().Cell(1, 1), shown);
        std::filesystem::remove(folder / "MINE.tab");
        logic.Unload();
        state.TableOpen = state.QuickCount = 0;
        state.TableFile.clear();
    }
    // After "save" the samples are on disk, and a file opened then is what a save or a print means.
    Measure();
    EXPECT_EQ(SaveTo("mine"), SaveOutcome::Saved);
    state.TableOpen = 0;
    OpenFile();
    EXPECT_EQ(&logic.Current(), &logic.Shown());
    logic.AddRow(" 3\tnext");
    EXPECT_EQ(table.Rows(), 5) << "but the next sample stands below its own";
}

TEST_F(TableScreenTest, ARecordingFillsItsTableAndReadsOneBack) {
    Own(ScreenCode::frmPHMe, 0);
    for (int again = 0; again < 2; ++again)
        logic.FillRows({"1\ta", "2\tb"});
    EXPECT_EQ(Rows(), (std::vector<std::string>{"1\ta", "2\tb", ""}));
    EXPECT_EQ(state.TableOpen, 0);
    OpenFile();
    EXPECT_EQ(logic.RowsLookedAt().size(), 2u);
    files.Expect(std::nullopt);
    EXPECT_FALSE(logic.LookAtFile());
    EXPECT_TRUE(logic.RowsLookedAt().empty());
}

TEST_F(TableScreenTest, AsksForTheFileOfTheRows) {
    // what is asked, the answer and the name chosen; whether it goes on, the file
    const std::tuple<const char*, TableFileRequest, std::optional<bool>, std::optional<std::string>, bool, std::string>
        rows[] = {
            {"no question, extension added", {nullptr, "", "", ".sdt"}, {}, "w", true, "W.sdt"},
            {"a dot in a folder is none in the name", {nullptr, "", "", ".pht"}, {}, "a.b/w", true, "a.b/W.pht"},
            {"case kept", {nullptr, "", "", ".phc", false}, {}, "Run.Dat", true, "Run.Dat"},
            {"cancelled", {nullptr, "", "", ".sdt"}, {}, std::nullopt, false, ""},
            {"declined", {"In a file?", "", "", ".tab"}, false, std::nullopt, true, "-999"},
            {"agreed", {"In a file?", "", "", ".tab"}, true, "x", true, "X.tab"},
        };
    for (const auto& [name, request, answer, chosen, goesOn, file] : rows) {
        SCOPED_TRACE(name);
        state.TableFile.clear();
        if (answer) prompts.ExpectAsk(request.question, *answer);
        if (answer.value_or(true)) files.Expect(chosen ? std::optional(folder / *chosen) : std::nullopt);
        EXPECT_EQ(logic.AskFile(request), goesOn);
        EXPECT_EQ(state.TableFile, file.empty() || file == "-999" ? file : folder / file);
        EXPECT_TRUE(file.empty() || logic.AskFile(request)) << "and is not asked again";
    }
    folder.Put("OLD.sdt", "old");
    state.TableFile.clear();
    files.Expect(folder / "old");
    prompts.ExpectReplace(folder / "OLD.sdt", false);
    files.Expect(folder / "new");
    EXPECT_TRUE(logic.AskFile({nullptr, "", "", ".sdt"}));
    EXPECT_EQ(state.TableFile, folder / "NEW.sdt");
}

TEST_F(TableScreenTest, ASavedTablePutAwayIsNotReplacedByTheNextOne) {
    for (const bool byBack : {true, false}) {
        const std::string name = byBack ? "BACK.TAB" : "CLOSE.TAB";
        AddSamples();
        EXPECT_EQ(SaveTo(name), SaveOutcome::Saved);
        state.TableOpen = 0;
        byBack ? logic.Back() : logic.Close();
        logic.AddRow(" 1\tanother");
        SaveAs("SECOND" + name);
        EXPECT_EQ(folder.Get(name), Golden("SAMPLES.TAB"));
        logic.Unload();
    }
}

TEST_F(TableScreenTest, CancelledOpenClosesTheScreenAndKeepsMeasuredRows) {
    logic.Load();
    files.Expect(std::nullopt);
    logic.Open();
    EXPECT_FALSE(logic.Loaded());
    Measure();
    files.Expect(std::nullopt);
    logic.Open();
    EXPECT_EQ(table.Cell(2, 1), "Brook µ°");
    EXPECT_EQ(state.OpenCancelled, 0);
    EXPECT_EQ(screens.log, "close hide ");
    logic.CloseByFrame();
    EXPECT_EQ(table.Rows(), 4) << "the frame hides while measured rows are unsaved";
    state.TableOpen = 0;
    logic.CloseByFrame();
    EXPECT_FALSE(logic.Loaded());
}

TEST_F(TableScreenTest, UnloadWritesTheNamedFileOnceRowsWereNumbered) {
    // QuickCount, TableFile, the files written
    const std::tuple<std::int16_t, std::string, const char*> rows[] = {
        {0, folder / "B.TAB", ""}, {1, "-999", ""}, {1, "", ""}, {1, folder / "A.TAB", "A.TAB"}};
    for (const auto& [count, file, written] : rows) {
        AddSamples();
        state.QuickCount = count;
        state.TableFile = file;
        logic.Unload();
        EXPECT_EQ(Joined(folder.Names(), state.QuickCount), Joined(written, 0));
    }
    EXPECT_EQ(folder.Get("A.TAB"), Golden("SAMPLES.TAB"));

    Measure();
    state.QuickCount = 1;
    OpenFile();
    logic.Unload();
    EXPECT_EQ(folder.Get("A.TAB"), Golden("SAMPLES.TAB")) << "a file on show never reaches the named file";
    EXPECT_EQ(folder.Get("OLD.TAB"), Golden("RECORD.TAB"));
}

TEST_F(TableScreenTest, ATemperatureThatNoNumberHoldsEndsNothing) {
    for (const std::string& celsius : {std::string("1E39"), std::string(45, '5')}) {
        state.FileTemp = celsius;
        logic.Load();
        EXPECT_EQ(Joined(table.txtData[2], table.txtData[3]), celsius + "|N/A");
        logic.Unload();
    }
}

TEST_F(TableScreenTest, ClosingReturnsToTheCaller) {
    state.ReturnScreen = 6;
    state.CaliDirty = 1;
    logic.Load();
    logic.Unload();
    Own(ScreenCode::frmPHMe, 0);
    state.CaliDirty = 1;
    AddSamples();
    logic.Close();
    EXPECT_EQ(table.Rows(), 4) << "a recording is only hidden";
    logic.Unload();
    EXPECT_EQ(screens.log, "close show6 timer hide close show15 ");
}

TEST_F(TableScreenTest, EveryWayOutAsksOrTellsTheTruth) {
    Measure();
    state.TableFile = "-999";
    prompts.ExpectAskToSave(question, false);
    logic.Leave();
    EXPECT_EQ(Joined(state.TableOpen, state.TableFile, logic.Loaded()), "0||0");

    Measure();
    state.TableFile = folder / "MINE.TAB";
    prompts.ExpectMessage("Your data have been saved: " + folder / "MINE.TAB");
    logic.Leave();
    EXPECT_EQ(folder.Get("MINE.TAB"), Golden("SAMPLES.TAB"));

    Measure();
    prompts.ExpectAskToSave(question, true);
    files.Expect(std::nullopt);
    prompts.ExpectAskToSave(question, true);
    files.Expect(folder / "again");
    logic.Leave();
    EXPECT_EQ(folder.Get("AGAIN.tab"), Golden("SAMPLES.TAB"));

    Measure();
    state.TableFile = folder / "no/MINE.TAB";
    prompts.ExpectMessage("Error76Saving" + state.TableFile + ":Path not found.");
    prompts.ExpectAskToSave("Would you like to save to data table?", false);
    logic.Leave("Would you like to save to data table?");
}

TEST_F(TableScreenTest, OpenAndCloseEmptyEightCellsOfTheFirstRow) {
    Own(ScreenCode::frmSampa, 0);
    logic.Load();
    for (int col = 0; col < 13; ++col)
        table.SetCell(1, col, "x");
    logic.Close();
    EXPECT_EQ(table.RowText(1), "\t\t\t\t\t\t\t\tx\tx\tx\tx\tx");
    logic.Back();
    EXPECT_TRUE(table.RowIsEmpty(1)) << "Back empties the whole row";
}

TEST_F(TableScreenTest, HideTableOnBackOnlyHides) {
    logic.Load();
    OpenFile();
    state.HideTableOnBack = -1;
    logic.Back();
    EXPECT_EQ(logic.RowsLookedAt().size(), 2u);
    EXPECT_EQ(screens.log, "hide ");
}

TEST_F(TableScreenTest, TwentyTwoRowsStayInViewAfterBack) {
    for (const int samples : {21, 22, 30}) {
        for (int i = 0; i < samples; ++i)
            logic.AddRow("1\ta");
        table.TopRow = 1;
        logic.Back();
        EXPECT_EQ(table.TopRow, samples == 30 ? 10 : samples == 22 ? 2 : 1) << samples;
        logic.Unload();
    }
}

}  // namespace
}  // namespace kelvo::test
