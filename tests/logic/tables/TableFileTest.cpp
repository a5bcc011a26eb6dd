#include "tables/TableFile.h"

#include "tables/TableBackup.h"

#include <algorithm>

#include "app/AppState.h"
#include "ph/RecordingRow.h"
#include "support/Joined.h"
#include "tables/RowFactsFile.h"
#include "tables/TableFixture.h"
#include "text/Backup.h"
#include "text/CodePage.h"
#include "text/Files.h"

namespace kelvo::test {
namespace {

class TableFileTest : public TableTest {
 protected:
    std::string Failed(int number, const std::string& name, const char* told) {
        return "Error" + std::to_string(number) + "Saving" + folder / name + ":" + told;
    }
    void Add(int rows) {
        for (int i = 0; i < rows; ++i)
            logic.AddRow("1\tTap\t09:05");
    }
    /// A backup as a save makes it.
    void MakeBackup(const std::string& name, const std::string& bytes) {
        ReplaceKeepingBackup(folder.Put("source", bytes), "x");
        std::filesystem::rename(folder / "source~", folder / name);
        std::filesystem::remove(folder / "source");
    }
    SaveOutcome Save() { return SaveTableFile(state, table, prompts, files); }
};

TEST_F(TableFileTest, WritesAndReadsEveryKind) {
    const std::string standards = ",1\t10\t10\t\r\n-179.5\t-120.5\t-119\t\r\n59.00\tN/A\t,";
    const std::string caption = "|Ref. : Ag/AgCl R7|ISE Serial No. F123";
    const std::string direct =
        "24/11/2026 08:30" + standards + "25,77.0,F,24/11/2026,Operator: Ann Lee,TISAB II" + caption;
    const std::string addition =
        "24/11/2026 09:05" + standards + "25.0,77.0,F,24/11/2026,Operator: Ann Lee,TISAB II" + caption;
    const std::string ph =
        "23/11/2026 16:00,PH-1,pH: 7, 4\r\nmV:0, 177(25°C),,,pH:\r\nmV:,24/11/2026,keep|Electrode 1|Operator: Ann Lee";
    const std::tuple<const char*, const char*, const char*, ScreenCode, int, std::string> rows[] = {
        {"SAMPLES.TAB", "samples", "SAMPLES.tab", ScreenCode::fmISEcli, 0, direct},
        // A dialog's number counts as direct potentiometry; a typed extension stays.
        {"SAMPLES.TAB", "samples.dat", "SAMPLES.DAT", ScreenCode::frmPtset, 0, direct},
        {"RECORD.TAB", "run", "RUN.tab", ScreenCode::frmPHMe, 0, direct},
        {"RECORD.PHC", "run", "RUN.phc", ScreenCode::frmPHMe, -1, ph},
        {"LIVE.PHT", "live", "LIVE.pht", ScreenCode::frmDsply, -1, ph},
        {"ADDITION.SMT", "w", "W.smt", ScreenCode::frmSampa, 0, addition},
        {"ADDITION.SDT", "w", "W.sdt", ScreenCode::frmStanad01, -1, addition},
    };
    CalibratePh();
    table.Method = {"24/11/2026 09:05", "59.16", "25.0", "77.0", "F"};
    for (const auto& [golden, typed, file, owner, pHMode, head] : rows) {
        SCOPED_TRACE(file);
        Own(owner, pHMode);
        const std::string bytes = Golden(golden);
        // The rows stand below the heads, the one line of a file that begins with a TAB.
        std::istringstream lines(FromCodePage(bytes.substr(bytes.find("\r\n", bytes.find("\r\n\t") + 2) + 2)));
        for (std::string line; std::getline(lines, line, '\r'); lines.get())
            logic.AddRow(line);
        ASSERT_EQ(SaveTo(typed), SaveOutcome::Saved);
        EXPECT_EQ(folder.Get(file), bytes);
        EXPECT_EQ(state.StatusMessage, "");
        const int count = table.Rows();
        logic.Unload();

        logic.Load();
        table.txtData.fill("keep");
        ReadTable(table, bytes, KindOf(state).form, KindOf(state).lastPass);
        EXPECT_EQ(Joined(table.txtData, table.Label1[7], table.Label1[9]), head);
        EXPECT_EQ(table.Rows(), count - 1);
        logic.Unload();
    }
}

// A correction of any of these would make files that differ from those the laboratories hold.
TEST_F(TableFileTest, ASecondSaveLosesHeadAndLastRowAndTellsIt) {
    AddSamples();
    ASSERT_EQ(SaveTo("samples"), SaveOutcome::Saved);
    ASSERT_EQ(Save(), SaveOutcome::Saved) << "asks nothing";
    EXPECT_EQ(folder.Get("SAMPLES.tab"), Golden("REPEATED.TAB"));
    EXPECT_EQ(
        state.StatusMessage,
        "Saved to SAMPLES.tab. Of the head only the first two lines are in the file; SAMPLES.tab~ beside it has the "
        "whole one. Export, CSV or XLSX in the table screen writes all rows with the whole head.");
    EXPECT_EQ(folder.Get("SAMPLES.tab~"), Golden("SAMPLES.TAB")) << "what it replaced stays beside it";
    logic.Unload();

    folder.Put("OLD.TAB", Golden("SAMPLES.TAB"));
    logic.Load();
    files.Expect("old.tab");
    ASSERT_TRUE(OpenTableFile(state, table, prompts, files)) << "a bare name lies in the data folder";
    ASSERT_EQ(Save(), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("OLD.TAB").find("Brook"), std::string::npos) << "no empty last row after an open";
    EXPECT_EQ(state.StatusMessage,
              "Saved to OLD.TAB. Row 2 of 2 is not in the file. Of the head only the first two lines are in the file; "
              "OLD.TAB~ beside it has the whole one. Export, CSV or XLSX in the table screen writes all rows with the "
              "whole head.");
    EXPECT_EQ(folder.Get("OLD.TAB~"), Golden("SAMPLES.TAB"));
    logic.Unload();

    // One point writes the stored slope.
    state.CaliPoints = 1;
    state.CaliPpm[1] = 10;
    state.CaliE[1] = -120.5f;
    logic.Load();
    ASSERT_EQ(SaveTo("one"), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("ONE.tab"), Golden("ONEPOINT.TAB"));
    logic.AddRow(" 1\tTap, cold\t9");
    logic.AddRow("\"2\tb");
    // A rewrite of a pH recording has the ISE head all the same.
    Own(ScreenCode::frmPHMe, -1);
    state.TableFile = folder / "R.TAB";
    ASSERT_EQ(RewriteTableFile(state, table, prompts), SaveOutcome::Saved);
    EXPECT_TRUE(folder.Get("R.TAB").starts_with("Operator Name:\tAnn Lee\r\n"));
    EXPECT_EQ(state.StatusMessage, "Saved to R.TAB. 2 rows hold a comma or a quote and will not open as shown.");
}

// Seventeen samples in three saves once came back as eight, and the third save took the only whole head away.
TEST_F(TableFileTest, AShortHeadIsToldAndNoBackupIsGivenUpForAPoorerOne) {
    Add(5);
    ASSERT_EQ(SaveTo("r"), SaveOutcome::Saved);
    const std::string first = folder.Get("R.tab");
    for (const int more : {6, 6}) {
        Add(more);
        ASSERT_EQ(Save(), SaveOutcome::Saved);
        EXPECT_EQ(folder.Get("R.tab~"), first) << "the whole head stays";
    }
    EXPECT_EQ(folder.Names().size(), 2u) << "the rows of the second save are in the third";
    logic.Unload();

    logic.Load();
    files.Expect(folder / "R.tab");
    logic.Open();
    EXPECT_EQ(state.StatusMessage,
              "The head of R.TAB is short, and the first of its 17 rows have been read in its place. File, Short Head "
              "shows all rows; R.TAB~ is an earlier version.");
    EXPECT_EQ(Joined(logic.RowsLookedAt().size(), logic.HasShortHead()), "8|1");
    logic.ReadShortHead();
    EXPECT_EQ(
        Joined(logic.RowsLookedAt().size(), logic.HasShortHead(), logic.Shown().txtData[6], logic.Shown().txtData[0]),
        "17|0|Operator: Ann Lee|24/11/2026 08:30");
    logic.Unload();

    const std::string heads = "\tSample\r\n", whole = std::string("1\n2\n3\n4\n5\n6\n7\n8\n9\n") + heads,
                      cut = "1\n2\n" + heads;
    // the backup, the old and the new file; the backups afterwards
    const std::tuple<const char*, std::string, std::string, std::string, std::string, std::string> rows[] = {
        {"no backup yet", "", cut + "a\n", cut + "a\nb\n", cut + "a\n", ""},
        {"more rows in the new version of it", cut + "a\n", cut + "a\nb\n", "x", cut + "a\nb\n", ""},
        {"a whole head for a short one", whole + "a\n", cut + "a\nb\n", cut + "a\nb\nc\n", whole + "a\n", ""},
        {"and rows that the new file lacks", whole + "a\n", cut + "a\nb\n", cut + "a\n", whole + "a\n", cut + "a\nb\n"},
        {"fewer rows", whole + "a\nb\n", whole + "c\n", whole + "d\n", whole + "a\nb\n", whole + "c\n"},
        {"nine lines are a whole head", cut + "a\n", whole + "a\n", "x", whole + "a\n", ""},
    };
    const auto replace = [&](const std::string& old, const std::string& fresh) {
        return ReplaceKeepingBackup(folder.Put("B.TAB", old), fresh, TableBackupRule(fresh));
    };
    for (const auto& [name, backup, old, fresh, kept, second] : rows) {
        for (const char* earlier : {"B.TAB~", "B.TAB~2"})
            std::filesystem::remove(folder / earlier);
        if (!backup.empty()) MakeBackup("B.TAB~", backup);
        EXPECT_TRUE(replace(old, fresh).kept);
        EXPECT_EQ(Joined(folder.Get("B.TAB"), folder.Get("B.TAB~"), folder.Get("B.TAB~2")), Joined(fresh, kept, second))
            << name;
    }
    // With all places taken by better ones the row that would go is told.
    for (int n = 1; n <= 9; ++n)
        MakeBackup("B.TAB~" + (n == 1 ? std::string() : std::to_string(n)), whole + "a\nb\n");
    EXPECT_FALSE(replace(cut + "z\n", cut + "y\n").kept);
    // A backup that was edited, and files of the analyst's own, are no backups of ours.
    folder.Put("B.TAB~4", cut + "edited\n");
    folder.Put("B.TAB~5", whole + "my copy\n");
    std::filesystem::remove(folder / "B.TAB~6");
    std::filesystem::create_symlink("B.TAB~", folder / "B.TAB~6");
    EXPECT_FALSE(replace(whole + "1\n", "x").kept);
    EXPECT_EQ(folder.Get("B.TAB~4") + folder.Get("B.TAB~5"), cut + "edited\n" + whole + "my copy\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "B.TAB~6"));
}

TEST_F(TableFileTest, ABackupThatCannotBeKeptIsToldAndNothingIsLeftBeside) {
    EXPECT_EQ(ReplaceKeepingBackup(folder.Put("K.TAB", "old"), "new").backup, folder / "K.TAB~");
    EXPECT_EQ(Joined(folder.Get("K.TAB"), folder.Get("K.TAB~"), folder.Names().size()), "new|old|2");
    // One letter more than a name may have.
    Add(1);
    table.FileName = folder.Put(std::string(251, 'L') + ".TAB", "old");
    EXPECT_EQ(Save(), SaveOutcome::Saved);
    EXPECT_TRUE(state.StatusMessage.ends_with(" The previous version could not be kept.")) << state.StatusMessage;
    EXPECT_EQ(folder.Names().size(), 3u);
    table.FileName.clear();
    prompts.ExpectReplace(folder / "K.TAB", true);
    prompts.ExpectMessage(Failed(61, "K.TAB", "Disk full."));
    OnSmallDisk(64, [&] { EXPECT_EQ(SaveTo("k.tab"), SaveOutcome::Failed); });
    EXPECT_EQ(Joined(folder.Get("K.TAB"), folder.Get("K.TAB~"), folder.Names().size()), "new|old|3");
}

TEST_F(TableFileTest, AVersionLeftByAKillBecomesABackup) {
    const std::string heads = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n\tSample\r\n", richest = heads + "a\nb\nc\n";
    // the version left hidden, the backup; on opening: the backups
    const std::tuple<const char*, std::string, std::string, std::string, std::string> rows[] = {
        {"between the two renames", heads + "a\n", "", heads + "a\n", ""},
        {"before the new version stood", heads + "b\n", heads, heads, ""},
        {"beside a richer backup", heads + "c\n", heads + "a\nb\n", heads + "a\nb\n", heads + "c\n"},
        {"beside a poorer one", heads + "c\n", heads, heads + "c\n", ""}};
    for (const auto& [name, left, backup, first, second] : rows) {
        for (const char* earlier : {"T.TAB~", "T.TAB~2"})
            std::filesystem::remove(folder / earlier);
        if (!backup.empty()) MakeBackup("T.TAB~", backup);
        folder.Put("T.TAB", heads + "b\n");
        folder.Put(".T.TAB.kelvo-b", left);
        logic.Load();
        files.Expect(folder / "T.TAB");
        EXPECT_TRUE(OpenTableFile(state, table, prompts, files));
        EXPECT_EQ(Joined(folder.Get("T.TAB~"), folder.Get("T.TAB~2")), Joined(first, second)) << name;
        EXPECT_FALSE(FileExists(folder / ".T.TAB.kelvo-b")) << name;
        logic.Unload();
    }
    folder.Put(".T.TAB.kelvo-b", richest);
    EXPECT_EQ(ReplaceKeepingBackup(folder / "T.TAB", "x", TableBackupRule("x")).backup, folder / "T.TAB~2");
    EXPECT_EQ(folder.Get("T.TAB~"), richest) << "a save does so, too";
}

// Two programs that measure into one file, and a hand that edits it, are the same to each of them.
TEST_F(TableFileTest, AFileThatIsChangedElsewhereLosesNothingOfEither) {
    AppState otherState = state;
    DataTable otherTable;
    ScriptedPrompts otherPrompts;
    TablePresenter other(otherState, otherTable, otherPrompts, files, clock);
    const std::string run = folder.Put("RUN.TAB", "last year"), changed = "RUN (changed elsewhere).TAB";
    state.TableFile = otherState.TableFile = run;
    const auto keep = [](TablePresenter& program, const std::string& row) {
        program.AddRow(row, {{"low", row}});
        EXPECT_EQ(program.KeepRows(), SaveOutcome::Saved);
    };
    const auto once = [&](const std::string& version) {
        return run + " has been changed elsewhere since it was last written here. That version is kept as " + version +
               "; RUN.TAB holds the rows of this table.";
    };
    keep(logic, "a0");
    keep(logic, "a1");
    EXPECT_EQ(folder.Get("RUN.TAB~"), "last year") << "what the first of the rows has replaced";
    keep(other, "b1");
    EXPECT_TRUE(!StandsAsLeft(table, run) && StandsAsLeft(otherTable, run) && StandsAsLeft(table, folder / "NONE"));
    EXPECT_EQ(logic.UnsavedRows()[0].file, "") << "an end that nobody sees replaces nothing";
    const std::string theirs = folder.Get("RUN.TAB"), facts = folder.Get("RUN.TAB.rows");
    const auto names = folder.Names();
    prompts.ExpectMessage(Failed(61, "RUN.TAB", "Disk full."));
    OnSmallDisk(16, [&] { EXPECT_EQ(logic.KeepRows(), SaveOutcome::Failed); });
    EXPECT_EQ(Joined(folder.Names(), folder.Get("RUN.TAB")), Joined(names, theirs));

    prompts.ExpectMessage(once(changed));
    keep(logic, "a2");
    EXPECT_EQ(Joined(folder.Get(changed), folder.Get(changed + ".rows")), Joined(theirs, facts));
    otherPrompts.ExpectMessage(once("RUN (changed elsewhere 2).TAB"));
    keep(other, "b2");
    prompts.ExpectMessage(run +
                          " has been changed elsewhere again and is left to who changes it. The rows of this table " +
                          "go on in RUN (measured here).TAB.");
    for (const char* row : {"3", "4"}) {
        keep(logic, std::string("a") + row);
        keep(other, std::string("b") + row);
    }
    EXPECT_EQ(Joined(state.TableFile, otherState.TableFile), folder / "RUN (measured here).TAB|" + run);
    for (const auto& [file, row] : {std::pair(state.TableFile, "a"), std::pair(run, "b")})
        for (const char* number : {"1", "2", "3", "4"})
            EXPECT_NE(ReadWholeFile(file).find(std::string("\n") + row + number + "\t"), std::string::npos)
                << file << row << number;
}

// Reading rules that look like faults and are the format.
TEST_F(TableFileTest, ReadsHeadLinesByTheirHabits) {
    const std::string before = "O\tx\r\nC\ty\r\nR\tr\r\nE\te\r\n", full = before + "S\t1\t\r\nV\t2\t\r\nL\t3\t\r\n";
    // the file, the box of the head, its text
    const std::tuple<const char*, std::string, std::size_t, const char*> rows[] = {
        {"older layout: one slope line for three", before + "Slope:\t59.1\r\n2\r\n3\r\n4\t5\r\n6\r\n", 1,
         "N/A\r\nN/A\r\n59.1"},
        {"the word anywhere in the line, in any case", full + "2\r\n3\r\n4\r\nExperiment:\tmy sLoPe test\r\n", 5,
         "N/A\r\nN/A\r\nmy sLoPe test"},
        {"but not in the line of the ion", full + "2\r\n3\r\nIon:\tSlope\tN:\tnone\r\n6\r\n", 4, "Slope"},
        {"a single TAB: no notes", full + "2\r\n3\r\nIon:\tF\r\n6\r\n", 7, "None"},
        {"two TABs and no third: the whole line", full + "2\r\n3\r\nIon:\tF\tISAB\r\n6\r\n", 7, "Ion:\tF\tISAB"},
        {"a line without TAB is its own value", full + "2\r\nwhole\r\n4\r\n6\r\n", 3, "whole"},
    };
    for (const auto& [name, bytes, box, text] : rows) {
        logic.Load();
        ReadTable(table, bytes + "\theads\r\n", TableHeadForm::Ise, 5);
        EXPECT_EQ(table.txtData[box], text) << name;
        EXPECT_EQ(table.Rows(), 1) << "no row after the heads leaves row 0 alone";
        logic.Unload();
    }
}

TEST_F(TableFileTest, ReadsRowsAsListItems) {
    logic.Load();
    ReadTable(table,
              Golden("ONEPOINT.TAB") +
                  "1\tTap, cold\t9\r\n"
                  " \t2\ta \t\r\n"
                  "\"3\ta\"\tlost\r\n"
                  "4\t5\" tube\n"
                  "\n"
                  "5",
              TableHeadForm::Ise, 5);
    // A comma splits a row, blanks and tabs at its head fall away, a leading quote ends at the next, one further in is
    // plain, an empty line is a row.
    EXPECT_EQ(Rows(), (std::vector<std::string>{"1\tTap", "cold\t9", "2\ta \t", "3\ta", "4\t5\" tube", "", "5"}));
}

TEST_F(TableFileTest, AsksForAName) {
    folder.Put("A.tab", "old");
    logic.Load();
    files.Expect(folder / "a");
    prompts.ExpectReplace(folder / "A.tab", false);
    files.Expect(std::nullopt);
    EXPECT_EQ(Save(), SaveOutcome::Cancelled);
    EXPECT_EQ(table.FileName, "") << "a refused name is not the next save's name";

    files.Expect(folder / "a");
    prompts.ExpectReplace(folder / "A.tab", false);
    files.Expect(folder / "c");
    EXPECT_EQ(Save(), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("A.tab"), "old");
    EXPECT_TRUE(FileExists(folder / "C")) << "the repeated dialog adds no extension";
    EXPECT_EQ(Joined(state.TableFile, table.FileName), folder / "C|" + folder / "c") << "and leaves two names";
}

TEST_F(TableFileTest, BadInputIsToldOnceInTheWordsOfTheSystem) {
    std::filesystem::create_directory(folder / "FOLDER.TAB");
    folder.Put("SHORT.TAB", "Operator Name:\tx\r\n");
    folder.Put("BINARY.TAB", std::string("\0\1\2\xFF\r\n", 6));
    folder.Put("LOCKED.TAB", "old");
    folder.Put("ZEROS.TAB", std::string(1'000'000, '\0'));
    ASSERT_EQ(chmod((folder / "LOCKED.TAB").c_str(), 0), 0);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    const std::tuple<std::string, int, const char*> rows[] = {
        {"NONE.TAB", 53, "File not found."},           {"SHORT.TAB", 62, "Input past end of file."},
        {"BINARY.TAB", 62, "Input past end of file."}, {"FOLDER.TAB", 75, "Path/File access error."},
        {"ZEROS.TAB", 62, "Input past end of file."},  {"no/such/A.TAB", 76, "Path not found."},
        {"LOCKED.TAB", 70, "Permission denied."}};
    {
        const OrdinaryUser user;
        logic.Load();
        for (const auto& [name, number, told] : rows) {
            prompts.ExpectMessage(Failed(number, name, told));
            files.Expect(folder / name);
            EXPECT_FALSE(OpenTableFile(state, table, prompts, files));
            EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
            EXPECT_EQ(table.Rows(), 2) << "the grid stands";
        }
        table.FileName.clear();
        prompts.ExpectReplace(folder / "LOCKED.TAB", true);
        prompts.ExpectMessage(Failed(70, "LOCKED.TAB", "Permission denied."));
        EXPECT_EQ(SaveTo("locked.tab"), SaveOutcome::Failed);
        EXPECT_EQ(table.FileName, "") << "the next save asks again and writes the whole head";
    }
    ASSERT_EQ(chmod((folder / "LOCKED.TAB").c_str(), 0644), 0);
    EXPECT_EQ(folder.Get("LOCKED.TAB"), "old");
    EXPECT_EQ(folder.Names().size(), 5u) << "nothing is left beside it";

    // What a power cut leaves of a file.
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    EXPECT_LT(table.txtData[6].size(), 100U) << "no megabyte of zeros on the screen";
    files.Expect(folder.Put("CUT.TAB", Golden("SAMPLES.TAB") + std::string(512, '\0')));
    logic.Open();
    EXPECT_EQ(Joined(logic.RowsLookedAt().size(), state.StatusMessage),
              "2|The last 512 bytes of CUT.TAB are zeros, as a power cut leaves them.");
}

TEST_F(TableFileTest, HeadAndRowsOfALiveFile) {
    const RecordingPoint ise[] = {{0, "09:05:07", {10, 0}, {-120.5f, 0}, {25, 0}},
                                  {1, "09:05:09", {100, 0}, {-61.5f, 0}, {25, 0}}};
    const RecordingPoint ph[] = {{0, "09:05:07", {5, 0}, {118, 0}, {25, 21.5f}},
                                 {1, "09:05:09", {5.02f, 0}, {116.75f, 0}, {25, 21.5f}}};
    CalibratePh();
    state.Channel[3] = 0;
    for (const bool isPh : {false, true}) {
        Own(ScreenCode::frmPHMe, isPh ? -1 : 0);
        const std::string golden = Golden(isPh ? "RECORD.PHC" : "RECORD.TAB");
        logic.Load();
        std::string live = logic.LiveHead();
        for (const RecordingPoint& point : isPh ? ph : ise)
            live += RecordingRow(state, point) + "\r\n";
        EXPECT_EQ(live, golden);
        logic.Unload();
    }
    state.SensorCount = 1;
    EXPECT_EQ(RecordingRow(state, ph[0]), "1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\tN/A\tN/A");
}

}  // namespace
}  // namespace kelvo::test
