#include "tables/TableFile.h"

#include <sys/mount.h>

#include <algorithm>

#include "tables/TableFixture.h"
#include "text/Files.h"

namespace kelvo::test {
namespace {

using TableFileTest = TableTest;

TEST_F(TableFileTest, WritesEveryKindToTheLetter) {
    struct Row {
        const char* golden;
        const char* typed;
        const char* file;
        ScreenCode owner;
        int pHMode;
        std::vector<const char*> rows;
    };
    const std::vector<const char*> samples = {" 1\tTap 1\t09:05\t-150.2\t3.14\t1.65E-4\t25\t77.0\t7.5",
                                              " 2\tBrook µ°\t09:07\t-100\t22.23\t1.17E-3\t25\t77.0\t7.5"};
    const Row rows[] = {
        {"SAMPLES.TAB", "samples", "SAMPLES.tab", ScreenCode::fmISEcli, 0, samples},
        // A dialog's number in ReturnScreen is direct potentiometry as well; a typed extension stays.
        {"SAMPLES.TAB", "samples.dat", "SAMPLES.DAT", ScreenCode::frmPtset, 0, samples},
        {"LIVE.PHT",
         "live",
         "LIVE.pht",
         ScreenCode::frmDsply,
         -1,
         {" 1\tA\t09:05\t6.98\t1.2\t25.0\t77.0\t\t\t25.0\t77.0"}},
        {"RECORD.PHC",
         "run",
         "RUN.phc",
         ScreenCode::frmPHMe,
         -1,
         {"1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t21.5\t70.7",
          "2\t1\t09:05:09\t5.02\t116.75\t25.0\t77.0\tN/A\tN/A\t21.5\t70.7"}},
        {"RECORD.TAB",
         "run",
         "RUN.tab",
         ScreenCode::frmPHMe,
         0,
         {"1\tF - 0\t09:05:07\t-120.50\t10\t5.26E-04\t25.0\t77.0\tN/A",
          "2\tF - 1\t09:05:09\t-61.50\t100\t5.26E-03\t25.0\t77.0\tN/A"}},
        {"ADDITION.SMT",
         "w",
         "W.smt",
         ScreenCode::frmSampa,
         0,
         {" 1\tW1\t09:05\t25\t77\t1\t10\t100\t5.26E-3\t-61.5\t-61.5\t100.00\t5.26E-3"}},
        {"ADDITION.SDT",
         "w",
         "W.sdt",
         ScreenCode::frmStanad01,
         -1,
         {" 1\tW1\t09:05\t25\t77\t100\t10\t1000\t5.26E-2\t-120.5\t-61.34\t10.00\t5.26E-4"}},
    };
    CalibratePh();
    table.Method = {"24/11/2026 09:05", "59.16", "25.0", "77.0", "F"};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.golden);
        Own(row.owner, row.pHMode);
        for (const char* text : row.rows)
            logic.AddRow(text);
        ASSERT_EQ(SaveTo(row.typed), SaveOutcome::Saved);
        EXPECT_EQ(folder.Get(row.file), Golden(row.golden));
        EXPECT_EQ(state.Remark, "");
        logic.Unload();
    }
}

TEST_F(TableFileTest, OnePointWritesTheStoredSlopeAndNoPointWritesLabelsAlone) {
    state.CaliPoints = 1;
    state.CaliPpm[1] = 10;
    state.CaliE[1] = -120.5f;
    logic.Load();
    ASSERT_EQ(SaveTo("one"), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("ONE.tab"), Golden("ONEPOINT.TAB"));
    state.CaliPoints = 0;
    const std::string head = TableHeadLines(state, table, TableHeadForm::Ise, 1);
    EXPECT_NE(head.find("Calibration Standard:\t\r\nCalibration Value (mV):\t\r\nCalibration Slopes:\t\r\n"),
              std::string::npos);
}

// A correction of any of these would make files that differ from those the laboratories hold.
TEST_F(TableFileTest, RepeatedSaveWritesTheFirstHeadPassAndTellsIt) {
    AddSamples();
    ASSERT_EQ(SaveTo("samples"), SaveOutcome::Saved);
    ASSERT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Saved) << "asks nothing";
    EXPECT_EQ(folder.Get("SAMPLES.tab"), Golden("REPEATED.TAB"));
    EXPECT_EQ(state.Remark, "Saved to SAMPLES.tab. Of the head only the first two lines are in the file.");
    EXPECT_EQ(folder.Get("SAMPLES.tab~"), Golden("SAMPLES.TAB")) << "what it replaced stays beside it";
}

TEST_F(TableFileTest, OpenAndSaveLosesTheLastRowAndTellsIt) {
    folder.Put("OLD.TAB", Golden("SAMPLES.TAB"));
    logic.Load();
    files.Expect(folder / "OLD.TAB");
    ASSERT_TRUE(OpenTableFile(state, table, prompts, files));
    EXPECT_EQ(table.Rows(), 3) << "no empty last row after an open";
    ASSERT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("OLD.TAB").find("Brook"), std::string::npos);
    EXPECT_EQ(state.Remark,
              "Saved to OLD.TAB. Row 2 of 2 is not in the file. Of the head only the first two lines are in the file.");
    EXPECT_EQ(folder.Get("OLD.TAB~"), Golden("SAMPLES.TAB"));
}

TEST_F(TableFileTest, RewriteTakesItsLayoutFromTheScreenAlone) {
    struct Row {
        const char* name;
        ScreenCode owner;
        int pHMode;
        const char* firstLine;
        int headLines;
    };
    const Row rows[] = {
        {"direct", ScreenCode::fmISEcli, 0, "Operator Name:\tAnn Lee", 11},
        {"live display by its number, whatever the mode", ScreenCode::frmDsply, 0, "Electrode 1 :", 12},
        {"recording takes the ISE head with a seventh pass", ScreenCode::frmPHMe, 0, "Operator Name:\tAnn Lee", 12},
        {"recording of pH too", ScreenCode::frmPHMe, -1, "Operator Name:\tAnn Lee", 12},
    };
    CalibratePh();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Own(row.owner, row.pHMode);
        logic.Load();
        table.txtData.fill("x");
        table.txtData[2] = table.txtData[5] = "";
        state.TableFile = folder / "R.TAB";
        ASSERT_EQ(RewriteTableFile(state, table, prompts), SaveOutcome::Saved);
        const std::string written = folder.Get("R.TAB");
        EXPECT_EQ(written.substr(0, written.find('\r')), row.firstLine);
        EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), row.headLines + 1);
        logic.Unload();
    }
}

TEST_F(TableFileTest, ReadsEveryKind) {
    struct Row {
        const char* golden;
        ScreenCode owner;
        int pHMode;
        std::array<const char*, 8> texts;
        const char* lastCell;
    };
    const Row rows[] = {
        {"SAMPLES.TAB",
         ScreenCode::fmISEcli,
         0,
         {"24/11/2026 08:30", "1\t10\t10\t\r\n-179.5\t-120.5\t-119\t\r\n59.00\tN/A\t", "25", "77.0", "F", "24/11/2026",
          "Operator: Ann Lee", "TISAB II"},
         "7.5"},
        {"LIVE.PHT",
         ScreenCode::frmDsply,
         -1,
         {"23/11/2026 16:00", "PH-1", "pH: 7, 4\r\nmV:0, 177(25°C)", "", "", "pH:\r\nmV:", "24/11/2026", "keep"},
         "77.0"},
        {"RECORD.PHC",
         ScreenCode::frmPHMe,
         -1,
         {"23/11/2026 16:00", "PH-1", "pH: 7, 4\r\nmV:0, 177(25°C)", "", "", "pH:\r\nmV:", "24/11/2026", "keep"},
         "70.7"},
        {"ADDITION.SDT",
         ScreenCode::frmStanad01,
         0,
         {"24/11/2026 09:05", "1\t10\t10\t\r\n-179.5\t-120.5\t-119\t\r\n59.00\tN/A\t", "25.0", "77.0", "F",
          "24/11/2026", "Operator: Ann Lee", "TISAB II"},
         "5.26E-4"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.golden);
        Own(row.owner, row.pHMode);
        logic.Load();
        table.txtData.fill("keep");
        table.txtData[7] = "keep";
        folder.Put(row.golden, Golden(row.golden));
        files.Expect(folder / row.golden);
        ASSERT_TRUE(OpenTableFile(state, table, prompts, files));
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            EXPECT_EQ(table.txtData[i], row.texts[i]) << i;
        EXPECT_EQ(table.Cell(table.Rows() - 1, table.Cols() - 1), row.lastCell);
        logic.Unload();
    }
}

TEST_F(TableFileTest, ReadsIseCaptionsFromTheFile) {
    logic.Load();
    ReadTable(table, Golden("SAMPLES.TAB"), TableHeadForm::Ise, 5);
    EXPECT_EQ(table.Label1[6], "");
    EXPECT_EQ(table.Label1[7], "Ref. : Ag/AgCl R7");
    EXPECT_EQ(table.Label1[8], "");
    EXPECT_EQ(table.Label1[9], "ISE Serial No. F123");
}

// Reading rules that look like faults and are the format.
TEST_F(TableFileTest, ReadsHeadLinesByTheirHabits) {
    const std::string before = "O\tx\r\nC\ty\r\nR\tr\r\nE\te\r\n";
    const std::string standards = "S\t1\t\r\nV\t2\t\r\nL\t3\t\r\n";
    const std::string heads = "\theads\r\n";
    struct Row {
        const char* name;
        std::string bytes;
        std::size_t box;
        const char* text;
    };
    const Row rows[] = {
        {"older layout: one slope line in place of three", before + "Slope:\t59.1\r\n2\r\n3\r\n4\t5\r\n6\r\n" + heads,
         1, "N/A\r\nN/A\r\n59.1"},
        {"the word is looked for in the whole line, in any case",
         before + standards + "2\r\n3\r\n4\r\nExperiment:\tmy sLoPe test\r\n" + heads, 5,
         "N/A\r\nN/A\r\nmy sLoPe test"},
        {"but not in the line of the ion", before + standards + "2\r\n3\r\nIon:\tSlope\tN:\tnone\r\n6\r\n" + heads, 4,
         "Slope"},
        {"a single TAB in the ion line: no notes", before + standards + "2\r\n3\r\nIon:\tF\r\n6\r\n" + heads, 7,
         "None"},
        {"two TABs and no third: position 0, so the whole line",
         before + standards + "2\r\n3\r\nIon:\tF\tISAB\r\n6\r\n" + heads, 7, "Ion:\tF\tISAB"},
        {"notes keep their own TABs", before + standards + "2\r\n3\r\nIon:\tF\tISAB\ta\tb\r\n6\r\n" + heads, 7, "a\tb"},
        {"a line without TAB is its own value", before + standards + "2\r\nwhole\r\n4\r\n6\r\n" + heads, 3, "whole"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        logic.Load();
        ReadTable(table, row.bytes, TableHeadForm::Ise, 5);
        EXPECT_EQ(table.txtData[row.box], row.text);
        EXPECT_EQ(table.Rows(), 1) << "no row after the heads leaves row 0 alone";
        logic.Unload();
    }
}

TEST_F(TableFileTest, ReadsRowsAsListItems) {
    struct Row {
        const char* name;
        const char* lines;
        std::vector<std::string> rows;
    };
    const Row rows[] = {
        {"a comma splits the row", "1\tTap, cold\t9\r\n", {"1\tTap", "cold\t9"}},
        {"blanks and tabs at the head fall away", " \t1\ta \t\r\n", {"1\ta \t"}},
        {"a leading quote ends at the next quote", "\"1\ta\"\tlost\r\n2\r\n", {"1\ta", "2"}},
        {"a quote further in is plain", "1\t5\" tube\r\n", {"1\t5\" tube"}},
        {"line ends without CR, and a last line without any", "1\n2", {"1", "2"}},
        {"an empty line is an empty row", "1\r\n\r\n2\r\n", {"1", "", "2"}},
        {"the code page", "\xB5\xB0\r\n", {"µ°"}},
    };
    const std::string golden = Golden("ONEPOINT.TAB");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        logic.Load();
        ReadTable(table, golden + row.lines, TableHeadForm::Ise, 5);
        EXPECT_EQ(Rows(), row.rows);
        logic.Unload();
    }
}

TEST_F(TableFileTest, TellsRowsThatWillNotOpenAsShown) {
    logic.AddRow(" 1\tTap, cold\t9");
    logic.AddRow("\"2\tb");
    ASSERT_EQ(SaveTo("a"), SaveOutcome::Saved);
    EXPECT_EQ(state.Remark, "Saved to A.tab. 2 rows hold a comma or a quote and will not open as shown.");
}

TEST_F(TableFileTest, WritesAsManyCellsAsTheGridHas) {
    logic.AddRow("1\ta");
    logic.AddRow("1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11");
    EXPECT_EQ(table.RowLine(1), "1\ta\t\t\t\t\t\t\t");
    EXPECT_EQ(table.RowLine(2), "1\t2\t3\t4\t5\t6\t7\t8\t9");
}

TEST_F(TableFileTest, AsksForAName) {
    const std::string question = "   This file already exists, would you like to replace it?";
    folder.Put("A.tab", "old");
    folder.Put("B.TAB", "other");
    logic.Load();

    files.Expect(std::nullopt);
    EXPECT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Cancelled);
    files.Expect("");
    EXPECT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Cancelled);
    EXPECT_EQ(files.last.filter, "All Data(*.Tab)|*.tab");
    EXPECT_EQ(files.last.directory, folder.Path());

    files.Expect(folder / "a");
    prompts.ExpectAsk(folder / "A.tab" + question, false);
    files.Expect(std::nullopt);
    EXPECT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Cancelled);
    EXPECT_EQ(table.FileName, "") << "a refused name is not the next save's name";
    EXPECT_EQ(folder.Get("A.tab"), "old");

    files.Expect(folder / "a");
    prompts.ExpectAsk(folder / "A.tab" + question, false);
    files.Expect(folder / "b.tab");
    prompts.ExpectAsk(folder / "B.TAB" + question, false);
    files.Expect(folder / "c");
    EXPECT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Saved);
    EXPECT_TRUE(FileExists(folder / "C")) << "the repeated dialog adds no extension";
    EXPECT_EQ(state.TableFile, folder / "C") << "and leaves its upper-case name here";
    EXPECT_EQ(table.FileName, folder / "c") << "not in the dialog";
}

TEST_F(TableFileTest, OpensBareNamesInTheDataFolderAndCancelsInSilence) {
    folder.Put("run.tab", Golden("SAMPLES.TAB"));
    logic.Load();
    files.Expect("run.tab");
    EXPECT_TRUE(OpenTableFile(state, table, prompts, files));
    EXPECT_EQ(table.FileName, folder / "RUN.TAB");
    EXPECT_EQ(files.last.filter, "All Data(*.Tab)|*.Tab");
    files.Expect(std::nullopt);
    EXPECT_FALSE(OpenTableFile(state, table, prompts, files));
    EXPECT_EQ(state.OpenCancelled, 1);
    files.Expect("");
    EXPECT_FALSE(OpenTableFile(state, table, prompts, files));
    EXPECT_EQ(state.OpenCancelled, 0);
    EXPECT_EQ(table.Rows(), 3);
}

TEST_F(TableFileTest, BadInputIsToldOnceInTheWordsOfTheSystem) {
    std::filesystem::create_directory(folder / "FOLDER.TAB");
    folder.Put("SHORT.TAB", "Operator Name:\tx\r\n");
    folder.Put("EMPTY.TAB", "");
    folder.Put("BINARY.TAB", std::string("\0\1\2\xFF\r\n", 6));
    folder.Put("HUGE.TAB", "");
    std::filesystem::resize_file(folder / "HUGE.TAB", std::uintmax_t{3} << 30);
    struct Row {
        const char* name;
        const char* told;
    };
    const Row rows[] = {
        {"NONE.TAB", "53Saving*:File not found."},           {"SHORT.TAB", "62Saving*:Input past end of file."},
        {"EMPTY.TAB", "62Saving*:Input past end of file."},  {"BINARY.TAB", "62Saving*:Input past end of file."},
        {"FOLDER.TAB", "75Saving*:Path/File access error."}, {"no/such/A.TAB", "76Saving*:Path not found."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        logic.Load();
        std::string told = std::string("Error") + row.told;
        told.replace(told.find('*'), 1, folder / row.name);
        prompts.ExpectMessage(told);
        files.Expect(folder / row.name);
        EXPECT_FALSE(OpenTableFile(state, table, prompts, files));
        EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
        EXPECT_EQ(prompts.lastTitle, "");
        EXPECT_TRUE(prompts.Done());
        EXPECT_EQ(table.Rows(), 2) << "the grid stands";
        logic.Unload();
    }
    logic.Load();
    prompts.ExpectMessage("Error76Saving" + folder / "no/A.tab" + ":Path not found.");
    EXPECT_EQ(SaveTo("no/a"), SaveOutcome::Failed);
    EXPECT_EQ(table.FileName, "") << "the next save asks again and writes the whole head";
}

TEST_F(TableFileTest, AFileTakenAwayWhileItIsShownIsWrittenAnew) {
    folder.Put("A.TAB", Golden("SAMPLES.TAB"));
    logic.Load();
    files.Expect(folder / "A.TAB");
    ASSERT_TRUE(OpenTableFile(state, table, prompts, files));
    std::filesystem::remove(folder / "A.TAB");
    EXPECT_EQ(SaveTableFile(state, table, prompts, files), SaveOutcome::Saved);
    EXPECT_NE(folder.Get("A.TAB").find("Tap 1"), std::string::npos);
    EXPECT_FALSE(FileExists(folder / "A.TAB~"));
}

TEST_F(TableFileTest, UnreadableAndReadOnlyFilesStayAsTheyWere) {
    folder.Put("LOCKED.TAB", "old");
    ASSERT_EQ(chmod((folder / "LOCKED.TAB").c_str(), 0), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    logic.Load();
    {
        OrdinaryUser user;
        prompts.ExpectMessage("Error70Saving" + folder / "LOCKED.TAB" + ":Permission denied.");
        files.Expect(folder / "LOCKED.TAB");
        EXPECT_FALSE(OpenTableFile(state, table, prompts, files));
        table.FileName.clear();
        prompts.ExpectAsk(folder / "LOCKED.TAB" + "   This file already exists, would you like to replace it?", true);
        prompts.ExpectMessage("Error70Saving" + folder / "LOCKED.TAB" + ":Permission denied.");
        EXPECT_EQ(SaveTo("locked.tab"), SaveOutcome::Failed);
    }
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(chmod((folder / "LOCKED.TAB").c_str(), 0644), 0);
    EXPECT_EQ(folder.Get("LOCKED.TAB"), "old");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"LOCKED.TAB"}) << "nothing is left beside it";
}

TEST_F(TableFileTest, FullDiskLeavesTheOldFileAndTheLiveFileWhole) {
    std::filesystem::create_directory(folder / "small");
    if (mount("none", (folder / "small").c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "a small file system needs the right to mount one";
    folder.Put("small/LIVE.TAB", "head\r\n");
    folder.Put("small/A.tab", "old");
    folder.Put("small/A.tab~", "older");
    folder.Put("small/ballast", std::string(48 * 1024, 'x'));
    for (int i = 0; i < 400; ++i)
        logic.AddRow("1\tsample with a long name, to fill the disk\t09:05\t-100\t22\t1\t2\t3\t4");

    prompts.ExpectAsk(folder / "small/A.tab" + "   This file already exists, would you like to replace it?", true);
    prompts.ExpectMessage("Error61Saving" + folder / "small/A.tab" + ":Disk full.");
    EXPECT_EQ(SaveTo("small/a"), SaveOutcome::Failed);
    EXPECT_EQ(folder.Get("small/A.tab"), "old");
    EXPECT_EQ(folder.Get("small/A.tab~"), "older");

    state.TableFile = folder / "small/LIVE.TAB";
    const std::string row(9 * 1024, 'r');
    prompts.ExpectMessage("Error61Saving" + state.TableFile + ":Disk full.");
    EXPECT_FALSE(AppendRecordingRow(state, row, prompts));
    EXPECT_EQ(folder.Get("small/LIVE.TAB"), "head\r\n") << "a row that does not fit whole is taken back";
    EXPECT_EQ(umount((folder / "small").c_str()), 0);
}

TEST_F(TableFileTest, LiveFileIsCompleteAfterEachRow) {
    struct Row {
        const char* golden;
        int pHMode;
        std::vector<RecordingPoint> points;
    };
    const Row rows[] = {
        {"RECORD.TAB",
         0,
         {{0, "09:05:07", {10, 0}, {-120.5f, 0}, {25, 0}}, {1, "09:05:09", {100, 0}, {-61.5f, 0}, {25, 0}}}},
        {"RECORD.PHC",
         -1,
         {{0, "09:05:07", {5, 0}, {118, 0}, {25, 21.5f}}, {1, "09:05:09", {5.02f, 0}, {116.75f, 0}, {25, 21.5f}}}},
    };
    CalibratePh();
    state.Channel[3] = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.golden);
        Own(ScreenCode::frmPHMe, row.pHMode);
        state.TableFile = folder / "LIVE.DAT";
        logic.Load();
        ASSERT_TRUE(WriteRecordingHead(state, table, prompts));
        const std::string golden = Golden(row.golden);
        const std::size_t end = golden.find(RecordingRow(state, row.points[0]));
        ASSERT_NE(end, std::string::npos);
        EXPECT_EQ(folder.Get("LIVE.DAT"), golden.substr(0, end));
        for (const RecordingPoint& point : row.points)
            ASSERT_TRUE(AppendRecordingRow(state, RecordingRow(state, point), prompts));
        EXPECT_EQ(folder.Get("LIVE.DAT"), golden);
        logic.Unload();
    }
    state.SensorCount = 1;
    EXPECT_EQ(RecordingRow(state, rows[1].points[0]), "1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\tN/A\tN/A");
}

TEST_F(TableFileTest, LiveFileThatIsTakenAwayIsToldAndTheRunGoesOn) {
    state.TableFile = folder / "gone/LIVE.TAB";
    prompts.ExpectMessage("Error76Saving" + state.TableFile + ":Path not found.");
    EXPECT_FALSE(AppendRecordingRow(state, "1\ta", prompts));
    std::filesystem::create_directory(folder / "gone");
    EXPECT_TRUE(AppendRecordingRow(state, "2\tb", prompts));
    EXPECT_EQ(folder.Get("gone/LIVE.TAB"), "2\tb\r\n");
}

TEST_F(TableFileTest, BackupOfALinkedFileHoldsTheOldContent) {
    std::filesystem::create_directory(folder / "store");
    folder.Put("store/REAL.TAB", "old");
    std::filesystem::create_symlink(folder / "store/REAL.TAB", folder / "LINK.TAB");
    EXPECT_TRUE(ReplaceKeepingBackup(folder / "LINK.TAB", "new"));
    EXPECT_EQ(folder.Get("store/REAL.TAB"), "new");
    EXPECT_EQ(folder.Get("LINK.TAB~"), "old");
    std::filesystem::create_directory(folder / "LINK.TAB~2");
    EXPECT_TRUE(ReplaceKeepingBackup(folder / "NEW.TAB", "first"));
    EXPECT_FALSE(std::filesystem::exists(folder / "NEW.TAB~")) << "nothing was replaced";
}

}  // namespace
}  // namespace kelvo::test
