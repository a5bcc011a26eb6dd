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
    void OpenFile() {
        folder.Put("OLD.TAB", Golden("RECORD.TAB"));
        files.Expect(folder / "OLD.TAB");
        logic.Open();
    }
    LogNavigator screens;
};

// A correction of the counts would change what stands in the grid after a look at a file.
TEST_F(TableScreenTest, BackAndCloseRestoreDifferently) {
    Measure();
    table.txtData[5] = "my test";
    OpenFile();
    EXPECT_EQ(table.Cell(1, 1), "F - 0");
    logic.Back();
    EXPECT_EQ(Rows().size(), 3u) << "the two samples and the empty row";
    EXPECT_EQ(table.Cell(1, 1), "Tap 1");
    EXPECT_EQ(table.txtData[5], "my test") << "seven texts come back";
    EXPECT_EQ(table.Label1[9], "Serial No. F123") << "without ISE here";

    OpenFile();
    logic.Close();
    EXPECT_EQ(Rows().size(), 4u) << "the saved empty row comes back as well";
    EXPECT_EQ(table.Cell(2, 1), "Brook µ°");
    EXPECT_EQ(table.txtData[5], "24/11/2026") << "five texts come back, the sixth stays that of the file";
    EXPECT_EQ(screens.log, "hide hide ");
}

TEST_F(TableScreenTest, ASavedTablePutAwayIsNotReplacedByTheNextOne) {
    for (const bool byBack : {true, false}) {
        const std::string name = byBack ? "BACK.TAB" : "CLOSE.TAB";
        AddSamples();
        EXPECT_EQ(SaveTo(name), SaveOutcome::Saved);
        state.TableOpen = 0;
        byBack ? logic.Back() : logic.Close();
        logic.AddRow(" 1\tanother");
        files.Expect(folder / "SECOND" + name);
        EXPECT_EQ(logic.Save(), SaveOutcome::Saved) << "asks for a name of its own";
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
    const struct {
        int quickCount;
        std::string tableFile;
        std::vector<std::string> written;
    } rows[] = {{0, folder / "B.TAB", {}}, {1, "-999", {}}, {1, "", {}}, {1, folder / "A.TAB", {"A.TAB"}}};
    for (const auto& row : rows) {
        AddSamples();
        state.QuickCount = static_cast<std::int16_t>(row.quickCount);
        state.TableFile = row.tableFile;
        logic.Unload();
        EXPECT_EQ(folder.Names(), row.written);
        EXPECT_EQ(state.QuickCount, 0);
    }
    EXPECT_EQ(folder.Get("A.TAB"), Golden("SAMPLES.TAB"));

    Measure();
    state.QuickCount = 1;
    OpenFile();
    logic.Unload();
    EXPECT_EQ(folder.Get("A.TAB"), Golden("SAMPLES.TAB")) << "a file on show never reaches the named file";
    EXPECT_EQ(folder.Get("OLD.TAB"), Golden("RECORD.TAB"));
}

TEST_F(TableScreenTest, KeptRowsLeaveTheBackupOfWhatStoodThereBefore) {
    state.TableFile = folder.Put("MINE.TAB", "last year");
    for (int i = 0; i < 3; ++i) {
        logic.AddRow("1\ta");
        EXPECT_EQ(logic.KeepRows(), SaveOutcome::Saved);
    }
    EXPECT_EQ(folder.Get("MINE.TAB~"), "last year");
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
    const std::string question = "Would you like to save the data table?";
    Measure();
    state.TableFile = "-999";
    prompts.ExpectAsk(question, false);
    logic.Leave();
    EXPECT_EQ(Joined(state.TableOpen, state.TableFile, logic.Loaded()), "0||0");

    Measure();
    state.TableFile = folder / "MINE.TAB";
    prompts.ExpectMessage("Your data have been saved: " + folder / "MINE.TAB");
    logic.Leave();
    EXPECT_EQ(folder.Get("MINE.TAB"), Golden("SAMPLES.TAB"));

    Measure();
    prompts.ExpectAsk(question, true);
    files.Expect(std::nullopt);
    prompts.ExpectAsk(question, true);
    files.Expect(folder / "again");
    logic.Leave();
    EXPECT_EQ(folder.Get("AGAIN.tab"), Golden("SAMPLES.TAB"));

    Measure();
    state.TableFile = folder / "no/MINE.TAB";
    prompts.ExpectMessage("Error76Saving" + state.TableFile + ":Path not found.");
    prompts.ExpectAsk("Would you like to save to data table?", false);
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
    EXPECT_EQ(Rows().size(), 2u);
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
