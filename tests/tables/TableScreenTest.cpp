#include "tables/TableFixture.h"
#include "tables/TableGrids.h"
#include "text/Files.h"

namespace kelvo::test {
namespace {

class LogDesk : public TableDesk {
 public:
    std::string log;
    void HideTable() override { log += "hide "; }
    void CloseTable() override { log += "close "; }
    void ShowScreen(ScreenCode code) override { log += "show" + std::to_string(static_cast<int>(code)) + " "; }
    void ResumeLiveDisplay() override { log += "timer "; }
};

class TableScreenTest : public TableTest {
 protected:
    TableScreenTest() { logic.Attach(&desk); }
    void Measure() {
        AddSamples();
        state.TableOpen = 1;
    }
    void OpenFile() {
        folder.Put("OLD.TAB", Golden("RECORD.TAB"));
        files.Expect(folder / "OLD.TAB");
        logic.Open();
    }
    LogDesk desk;
};

TEST_F(TableScreenTest, LoadsTheLayoutOfItsOwner) {
    struct Row {
        ScreenCode owner;
        int pHMode;
        int cols;
        const char* lastHead;
        const char* caption0;
        const char* text0;
        const char* text2;
    };
    const char* const buffers = "pH: 7, 4\r\nmV:0, 177(25°C)";
    const Row rows[] = {
        {ScreenCode::fmISEcli, 0, 9, "pH", "Calibration:", "24/11/2026 08:30", "25"},
        {ScreenCode::None, 0, 9, "pH", "Calibration:", "24/11/2026 08:30", "25"},
        {ScreenCode::frmPHMe, 0, 9, "pH", "Calibration:", "24/11/2026 08:30", "25"},
        {ScreenCode::frmPHMe, -1, 11, "Temp.2 °F", "Calibration date/time:", "23/11/2026 16:00", buffers},
        {ScreenCode::frmDsply, -1, 11, "Temp.2 °F", "Calibration date/time:", "23/11/2026 16:00", buffers},
        {ScreenCode::frmDsply, 0, 11, "N/A", "Calibration date/time:", "24/11/2026 08:30", "25"},
        {ScreenCode::frmSampa, 0, 13, "Sample (mol/L)", "Calibration:", "now", "21.0"},
        {ScreenCode::frmStanad01, 0, 13, "Sample(mol/L)", "Calibration:", "now", "21.0"},
    };
    CalibratePh();
    table.Method = {"now", "59.16", "21.0", "69.8", "K"};
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.owner));
        Own(row.owner, row.pHMode);
        logic.Load();
        EXPECT_EQ(table.Rows(), 2);
        EXPECT_EQ(table.Cols(), row.cols);
        EXPECT_EQ(table.ColWidths.size(), static_cast<std::size_t>(row.cols));
        EXPECT_EQ(table.Cell(0, row.cols - 1), row.lastHead);
        EXPECT_EQ(table.Label1[0], row.caption0);
        EXPECT_EQ(table.txtData[0], row.text0);
        EXPECT_EQ(table.txtData[2], row.text2);
        logic.Unload();
    }
    TableHead_ISE(state, table);
    EXPECT_EQ(table.Label1[1], "Slope:");
}

TEST_F(TableScreenTest, ViewingAFileLeavesThePhTextsToIt) {
    CalibratePh();
    Own(ScreenCode::frmPHMe, -1);
    state.ViewOnly = 1;
    logic.Load();
    EXPECT_EQ(table.txtData[0], "");
    EXPECT_EQ(table.txtData[6], "");
}

TEST_F(TableScreenTest, MonthComesFirstWhenSoSet) {
    state.DateFormat = 1;
    logic.Load();
    EXPECT_EQ(table.txtData[5], "11/24/2026");
}

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
    EXPECT_EQ(table.Cell(3, 1), "");
    EXPECT_EQ(table.txtData[4], "F");
    EXPECT_EQ(table.txtData[5], "24/11/2026") << "five texts come back, the sixth stays that of the file";
    EXPECT_EQ(desk.log, "hide hide ");
}

TEST_F(TableScreenTest, WithoutMeasuredRowsNothingComesBack) {
    logic.Load();
    OpenFile();
    logic.Back();
    EXPECT_EQ(Rows(), (std::vector<std::string>{"\t\t\t\t\t\t\t\t"}));
    EXPECT_EQ(table.FileName, "") << "the file put away is not the next save's name";
}

TEST_F(TableScreenTest, ASavedTablePutAwayIsNotReplacedByTheNextOne) {
    for (const bool byBack : {true, false}) {
        AddSamples();
        state.TableOpen = 1;
        EXPECT_EQ(SaveTo("first"), SaveOutcome::Saved);
        state.TableOpen = 0;
        byBack ? logic.Back() : logic.Close();
        logic.AddRow(" 1\tanother");
        files.Expect(folder / "second");
        EXPECT_EQ(logic.Save(), SaveOutcome::Saved) << "asks for a name of its own";
        EXPECT_EQ(folder.Get("FIRST.tab"), Golden("SAMPLES.TAB"));
        logic.Unload();
        std::filesystem::remove(folder / "FIRST.tab");
        std::filesystem::remove(folder / "SECOND.tab");
    }
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
    EXPECT_EQ(desk.log, "hide ");
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

TEST_F(TableScreenTest, CancelledOpenClosesTheScreenAndKeepsMeasuredRows) {
    logic.Load();
    files.Expect(std::nullopt);
    logic.Open();
    EXPECT_FALSE(logic.Loaded());
    EXPECT_EQ(desk.log, "close ");
    EXPECT_EQ(state.OpenCancelled, 0);

    Measure();
    files.Expect(std::nullopt);
    logic.Open();
    EXPECT_TRUE(logic.Loaded());
    EXPECT_EQ(table.Cell(2, 1), "Brook µ°");
    EXPECT_EQ(desk.log, "close hide ");
}

TEST_F(TableScreenTest, UnloadWritesTheNamedFileOnceRowsWereNumbered) {
    struct Row {
        const char* name;
        int quickCount;
        const char* tableFile;
        bool written;
    };
    const Row rows[] = {{"numbered and named", 1, "A.TAB", true},
                        {"not numbered", 0, "B.TAB", false},
                        {"declined", 1, "-999", false},
                        {"never asked", 1, "", false}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        AddSamples();
        state.TableOpen = 0;
        state.QuickCount = static_cast<std::int16_t>(row.quickCount);
        const std::string file = row.tableFile;
        state.TableFile = file.size() == 5 ? folder / file : file;
        logic.Unload();
        if (file.size() == 5) {
            EXPECT_EQ(folder.Get(file), row.written ? Golden("SAMPLES.TAB") : "");
        }
        EXPECT_EQ(folder.Names(), std::vector<std::string>{"A.TAB"});
        EXPECT_EQ(state.QuickCount, 0);
        EXPECT_FALSE(logic.Loaded());
        logic.Unload();
    }
}

TEST_F(TableScreenTest, AFileOnShowNeverReachesTheNamedFile) {
    Measure();
    state.QuickCount = 1;
    state.TableFile = folder / "MINE.TAB";
    OpenFile();
    logic.Unload();
    EXPECT_EQ(folder.Get("MINE.TAB"), Golden("SAMPLES.TAB"));
    EXPECT_EQ(folder.Get("OLD.TAB"), Golden("RECORD.TAB"));
}

TEST_F(TableScreenTest, KeptRowsLeaveTheBackupOfWhatStoodThereBefore) {
    folder.Put("MINE.TAB", "last year");
    state.TableFile = folder / "MINE.TAB";
    for (int i = 0; i < 3; ++i) {
        logic.AddRow("1\ta");
        EXPECT_EQ(logic.KeepRows(), SaveOutcome::Saved);
    }
    EXPECT_EQ(folder.Get("MINE.TAB~"), "last year");
    EXPECT_NE(folder.Get("MINE.TAB"), "last year");
}

TEST_F(TableScreenTest, ClosingReturnsToTheCaller) {
    const std::pair<int, const char*> rows[] = {
        {6, "close show6 timer "}, {15, "close show15 "}, {22, "close show22 "}, {23, "close show23 "}, {1, "close "}};
    for (const auto& [owner, log] : rows) {
        state.ReturnScreen = static_cast<std::int16_t>(owner);
        state.CaliDirty = 1;
        desk.log.clear();
        logic.Load();
        logic.Unload();
        EXPECT_EQ(desk.log, log);
        EXPECT_EQ(state.CaliDirty, 0);
    }
}

TEST_F(TableScreenTest, FrameHidesWhileMeasuredRowsAreUnsaved) {
    Measure();
    logic.CloseByFrame();
    EXPECT_TRUE(logic.Loaded());
    EXPECT_EQ(table.Rows(), 4);
    state.TableOpen = 0;
    logic.CloseByFrame();
    EXPECT_FALSE(logic.Loaded());
    EXPECT_EQ(desk.log, "hide close ");
}

TEST_F(TableScreenTest, CloseInARecordingOnlyHides) {
    Own(ScreenCode::frmPHMe, 0);
    AddSamples();
    logic.Close();
    EXPECT_EQ(table.Rows(), 4);
    Own(ScreenCode::frmDsply, -1);
    logic.Close();
    EXPECT_EQ(desk.log, "hide hide timer ");
}

TEST_F(TableScreenTest, EveryWayOutAsksOrTellsTheTruth) {
    const std::string question = "Would you like to save the data table?";
    logic.Leave();
    Measure();
    state.TableFile = "-999";
    prompts.ExpectAsk(question, false);
    logic.Leave();
    EXPECT_EQ(state.TableOpen, 0);
    EXPECT_EQ(state.TableFile, "");
    EXPECT_FALSE(logic.Loaded());

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

}  // namespace
}  // namespace kelvo::test
