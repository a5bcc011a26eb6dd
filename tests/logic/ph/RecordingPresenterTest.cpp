#include "ph/RecordingPresenter.h"

#include <filesystem>

#include "ph/RecordingFixture.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

/// A working table of texts: remembers what was asked of it.
class FakeTable : public WorkingTable {
 public:
    explicit FakeTable(AppState& state) : state_(state) {}

    void SetMethodHead(const MethodHead&) override {}
    int RowCount() const override { return static_cast<int>(rows.size()); }
    std::string NextRowNumber() override { return {}; }
    void AddRow(const std::string&) override {}
    void DropRow() override {}
    void FillRows(std::vector<std::string> fresh) override { rows = std::move(fresh); }
    bool AskFile(const TableFileRequest& request) override {
        asked = std::string(request.question) + "|" + request.filter + "|" + request.extension;
        state_.TableFile = fileToChoose;
        return !fileToChoose.empty();
    }
    SaveOutcome KeepRows() override { return SaveOutcome::Cancelled; }
    SaveOutcome Save() override {
        if (whileSaving) whileSaving();
        saved = rows;
        const SaveOutcome outcome = saves.empty() ? SaveOutcome::Saved : saves.front();
        if (!saves.empty()) saves.erase(saves.begin());
        return outcome;
    }
    void Prompt(const std::string&) override {}
    void Leave(const std::string&) override {}
    void Unload() override { rows.clear(); }
    std::string LiveHead() override { return "Electrode 1 :\r\n\tNo.\tTime\r\n"; }
    bool LookAtFile() override { return fileChosen; }
    std::vector<std::string> RowsLookedAt() const override { return fileRows; }

    std::string fileToChoose = "-999", asked;
    std::vector<std::string> rows, saved, fileRows;
    std::vector<SaveOutcome> saves;
    std::function<void()> whileSaving;
    bool fileChosen = true;

 private:
    AppState& state_;
};

class RecordingPresenterTest : public RecordingFixture, protected RecordingHost {
 protected:
    RecordingPresenterTest() { clock.steady = 1000; }

    /// Seconds pass, on the steady clock and on the wall.
    void Pass(double seconds) {
        clock.steady += seconds;
        int left = static_cast<int>(std::lround(seconds));
        DateTime& t = clock.now;
        left += t.second + 60 * (t.minute + 60 * t.hour);
        t.second = left % 60;
        t.minute = left / 60 % 60;
        t.hour = left / 3600 % 24;
        t.day += left / 86400;
    }
    /// Runs until `points` are taken, each tick at its moment.
    void RunTo(RecordingPresenter& run, int points) {
        while (run.Ticking() && run.Run().Taken() < points) {
            Pass(run.NextTick() - clock.steady);
            run.Tick();
        }
    }

    void ShowSetup() override { went += "setup "; }
    void ShowMenu() override { went += "menu "; }
    void ShowTable() override { went += "table "; }
    void EndProgram() override { went += "end "; }
    void StopLink() override { went += "link "; }
    bool Ending() const override { return ending; }

    FakeTable table{state};
    bool ending = false;
    std::string went;

    /// File, Stop, Re-start, hint, busy.
    std::string Menus() const {
        const RecordingFace& face = recording.Face();
        return Joined(int{face.mnuF}, int{face.mnuStop}, int{face.mnuStart}, int{face.hint}, int{face.busy});
    }
    std::string Boxes() const { return Joined(recording.Face().txtTT); }
    std::string Live() const { return folder.Get("RUN.phc"); }
    void ChooseLiveFile() { table.fileToChoose = folder / "RUN.phc"; }
    std::size_t Kept() const { return FindKeptRecordings(folder / "own/").size(); }
    bool Says(const std::string& remark) const { return recording.Face().status.find(remark) != std::string::npos; }

    RecordingPresenter recording{state, prompts, files, clock, table, *this, Inputs()};
};

TEST_F(RecordingPresenterTest, ARunFromItsStartToItsEnd) {
    ChooseLiveFile();
    recording.Load(plan);
    EXPECT_EQ(table.asked,
              "Would you like to save your data in a file while you are measuring|All Data(*.phc)|*.phc|.phc");
    EXPECT_EQ(recording.Face().caption, "pH Continuous Recording started at:  25/11/2026 09:05:07");
    EXPECT_EQ(Boxes(), ",,,00:00:00,2 Sec.");
    EXPECT_EQ(Menus(), "0|1|0|0|1");
    RunTo(recording, 1);
    EXPECT_EQ(clock.now.second, 9) << "point 0 is taken a whole interval after the start";
    EXPECT_EQ(Boxes(), "0,5.00,,00:00:00,2 Sec.");
    EXPECT_EQ(Menus(), "0|1|0|0|1");
    RunTo(recording, 2);
    EXPECT_EQ(Boxes(), "1,5.00,,00:00:02,2 Sec.");
    EXPECT_EQ(Menus(), "0|1|0|0|0") << "the busy cursor goes with the second point";
    EXPECT_EQ(Live(), table.LiveHead() + "1\t0\t09:05:09\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0\r\n" +
                          "2\t1\t09:05:11\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0\r\n");
    RunTo(recording, 99);
    EXPECT_EQ(Boxes(), "20,5.00,,00:00:40,2 Sec.");
    EXPECT_EQ(Menus(), "1|0|0|1|0");
    EXPECT_EQ(clock.steady, 1042) << "21 points";
    EXPECT_FALSE(recording.Ticking());
    EXPECT_TRUE(Says("The recording has ended: 21 of 21 points."));
    prompts.ExpectMessage("Your data have been saved: " + (folder / "RUN.phc"));
    state.IsePath[1] = 1;
    recording.Back();
    EXPECT_EQ(went, "link menu ");
    EXPECT_EQ(Joined(state.ReturnScreen, state.TableOpen, state.TableFile, state.ViewOnly, state.PhPath, state.IsePath),
              "0|0||0|0,0,0,1,0|0,0,0");
}

TEST_F(RecordingPresenterTest, TheLongestRunGoesOverMidnightAndAClockChange) {
    plan.interval = 8;
    plan.period = 3;
    state.DateFormat = 1;
    ChooseLiveFile();
    recording.Load(plan);
    EXPECT_EQ(recording.Face().caption, "pH Continuous Recording started at:  11/25/2026 09:05:07");
    RunTo(recording, 2);
    EXPECT_EQ(recording.Face().txtTT[3], "00:30:00");
    clock.now.hour = 2;  // the wall clock is set back
    RunTo(recording, 201);
    EXPECT_EQ(clock.steady, 1000 + 201 * 1800.0) << "100 hours 30 minutes";
    EXPECT_EQ(Boxes(), "200,5.00,,100:00:00,30 Min.");
    EXPECT_EQ(recording.Run().Points()[2].time, "02:35:07");
    EXPECT_EQ(recording.Run().Points()[46].time, "00:35:07") << "over midnight";
    const std::string live = Live();
    EXPECT_EQ(std::count(live.begin(), live.end(), '\n'), 2 + 201);
    EXPECT_EQ(recording.Run().MissedPoints(), 0);
}

TEST_F(RecordingPresenterTest, StopAndRestartGoOnAtTheSamePoint) {
    recording.Load(plan);
    RunTo(recording, 3);
    recording.Stop();
    EXPECT_EQ(Menus(), "1|0|1|1|0");
    Pass(100);
    recording.Tick();
    EXPECT_EQ(recording.Run().Taken(), 3);
    recording.Restart();
    EXPECT_EQ(Menus(), "0|1|0|0|0");
    RunTo(recording, 4);
    EXPECT_EQ(Boxes(), "3,5.00,,00:00:06,2 Sec.") << "the pause does not show";
    EXPECT_EQ(recording.Run().Points()[3].time, "09:06:55");
    EXPECT_FALSE(Says("missing"));
    Pass(60);
    recording.Tick();
    EXPECT_TRUE(Says("29 points are missing: the machine was asleep."));
    EXPECT_EQ(recording.Run().Taken(), 5) << "and not made up for";
}

TEST_F(RecordingPresenterTest, AGapIsTold) {
    recording.Load(plan);
    RunTo(recording, 1);
    frameAge = 12;
    RunTo(recording, 2);
    EXPECT_TRUE(recording.Face().doubtful[0]);
    frameAge = std::nullopt;
    RunTo(recording, 3);
    EXPECT_TRUE(Says("2 points are of an old frame (hollow)."));
    frameAge = 0;
    RunTo(recording, 4);
    EXPECT_FALSE(recording.Face().doubtful[0]);
    recording.NumberEntered("1");
    EXPECT_TRUE(Says("Point 1, 09:05:11: its frame was 12 s old, hollow in the graph."));
    EXPECT_TRUE(recording.Face().doubtful[0]);
    recording.NumberEntered("2");
    EXPECT_TRUE(Says("Point 2, 09:05:13: no frame had come from the interface."));
    recording.NumberEntered("3");
    EXPECT_TRUE(Says("Point 3, 09:05:15."));
    int hollow = 0;
    for (const DisplayItem& item : recording.Graph().Items())
        hollow += item.hollow ? 1 : 0;
    EXPECT_EQ(hollow, 2);
}

TEST_F(RecordingPresenterTest, DataNumbers) {
    state.Channel[3] = state.Channel[4] = 1;
    plan.electrode[1] = true;
    plan.interval = 5;
    const char* const outside = "Please type a number in the 'Data Number' box within the correct data range";
    const char* const fault = "Data out of range, please type a number within the right range";
    recording.Load(plan);
    prompts.ExpectMessage(outside);
    recording.NumberEntered("0");
    RunTo(recording, 4);
    state.Reading[0] = 177;
    RunTo(recording, 5);
    struct Row {
        const char* number;
        const char* boxes;
        const char* message;
    };
    for (const Row& row : std::initializer_list<Row>{{"0", "0,5.00,7.00,00:00:00", nullptr},
                                                     {"4", "4,4.00,7.00,00:08:00", nullptr},
                                                     {" 1.5x", " 1.5x,5.00,7.00,00:04:00", nullptr},
                                                     {"", ",5.00,7.00,00:00:00", nullptr},
                                                     {"5", ",,,", outside},
                                                     {"21", ",,,", outside},
                                                     {"1E9", ",,,", outside},
                                                     {"-1", "-1,,,", fault},
                                                     {"-1E9", "-1E9,,,", fault}}) {
        if (row.message != nullptr) prompts.ExpectMessage(row.message);
        recording.NumberEntered(row.number);
        EXPECT_EQ(Boxes(), std::string(row.boxes) + ",2 Min.") << row.number;
    }
    recording.NumberTyped("1");
    recording.ToggleHint();
    EXPECT_TRUE(recording.Face().hint);
    RunTo(recording, 6);
    EXPECT_EQ(Boxes(), "5,4.00,7.00,00:10:00,2 Min.") << "a number left half typed does not stop the boxes";
    Pass(115);
    recording.NumberTyped("1");
    RunTo(recording, 7);
    EXPECT_EQ(Boxes(), "1,4.00,7.00,00:12:00,2 Min.") << "one being typed stays";
}

TEST_F(RecordingPresenterTest, ADeclinedRunIsAskedForOnLeaving) {
    recording.Load(plan);
    RunTo(recording, 3);
    EXPECT_EQ(state.TableOpen, 1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "own/"), {}), 1);
    prompts.ExpectAskToSave("Would you like to save the current data table?", true);
    prompts.ExpectAskToSave("Would you like to save the current data table?", true);
    prompts.ExpectAskToSave("Would you like to save the current data table?", true);
    table.saves = {SaveOutcome::Cancelled, SaveOutcome::Failed, SaveOutcome::Saved};
    table.whileSaving = [this] { RunTo(recording, recording.Run().Taken() + 1); };
    recording.New();
    EXPECT_EQ(table.saved.size(), 6u) << "points taken while the file dialog stood are in it";
    EXPECT_EQ(table.saved[5].substr(0, 13), "6\t5\t09:05:19\t");
    EXPECT_EQ(went, "link setup ");
    EXPECT_FALSE(recording.Ticking());
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own/"));
}

TEST_F(RecordingPresenterTest, WhatBecomesOfTheJournal) {
    struct Row {
        const char* name;
        bool declined, ends;
        std::size_t kept;
    };
    for (const Row& row : std::initializer_list<Row>{{"declined", true, false, 0},
                                                     {"the session ends behind the question", false, true, 1},
                                                     {"the program is killed", false, false, 1}}) {
        SCOPED_TRACE(row.name);
        ending = false;
        {
            RecordingPresenter other(state, prompts, files, clock, table, *this, Inputs());
            other.Load(plan);
            RunTo(other, 2);
            if (row.declined || row.ends) {
                ending = row.ends;
                prompts.ExpectAskToSave("Would you like to save the current data table?", false);
                other.Back();
            }
        }
        EXPECT_EQ(Kept(), row.kept);
        std::filesystem::remove_all(folder / "own/");
    }
}

TEST_F(RecordingPresenterTest, ALiveFileThatCannotBeWritten) {
    std::filesystem::create_directory(folder / "disk");
    table.fileToChoose = folder / "disk/RUN.phc";
    recording.Load(plan);
    std::filesystem::remove_all(folder / "disk");
    RunTo(recording, 1);
    EXPECT_TRUE(Says("1 point is still to be written to "));
    RunTo(recording, 3);
    EXPECT_TRUE(recording.Trouble());
    EXPECT_TRUE(Says("3 points are still to be written to " + table.fileToChoose + ", and kept safe meanwhile."));
    const std::string error = "Error76Saving" + table.fileToChoose + ":Path not found.";
    prompts.ExpectMessage(error);
    recording.TellTroubles();
    RunTo(recording, 5);
    EXPECT_FALSE(recording.Trouble()) << "once";
    prompts.ExpectMessage(error);
    prompts.ExpectAskToSave("Would you like to save the current data table?", true);
    recording.Back();
    EXPECT_EQ(table.saved.size(), 5u);
    EXPECT_EQ(Kept(), 0u);
}

TEST_F(RecordingPresenterTest, RowsThatNeitherFileHoldsAreHandedOutAtTheEnd) {
    std::filesystem::create_directory(folder / "disk");
    table.fileToChoose = folder / "disk/RUN.phc";
    recording.Load(plan);
    std::filesystem::remove_all(folder / "disk");
    RunTo(recording, 3);
    EXPECT_TRUE(recording.Unsaved().empty()) << "the journal holds them";
    std::filesystem::remove_all(folder / "own");
    folder.Put("own", "in the way");
    RunTo(recording, 4);
    const auto unsaved = recording.Unsaved();
    ASSERT_EQ(unsaved.size(), 1u);
    EXPECT_EQ(Joined(unsaved[0].extension, unsaved[0].file), ".PHC|" + table.fileToChoose);
    EXPECT_TRUE(unsaved[0].bytes.starts_with(table.LiveHead()));
    const std::string rows = unsaved[0].bytes.substr(table.LiveHead().size());
    EXPECT_EQ(std::count(rows.begin(), rows.end(), '\n'), 4);
}

TEST_F(RecordingPresenterTest, ABadTableStopsTheRunOnce) {
    recording.Load(plan);
    RunTo(recording, 2);
    state.Buffers1[2] = {0, 7, 177};
    RunTo(recording, 5);
    EXPECT_EQ(Menus(), "1|0|1|1|0");
    EXPECT_EQ(recording.Run().Taken(), 2);
    prompts.ExpectMessage("Bad calibration data, please re-do the calibration");
    recording.TellTroubles();
}

TEST_F(RecordingPresenterTest, NoElectrodeNoRun) {
    plan.electrode = {};
    prompts.ExpectMessage("Click on 'File/New' to select a channel, or click on 'File/Open' to read a file");
    recording.Load(plan);
    EXPECT_EQ(Menus(), "1|0|0|0|0");
    EXPECT_FALSE(recording.Ticking());
    recording.Back();
    EXPECT_EQ(went, "link menu ");
}

TEST_F(RecordingPresenterTest, AnIonIsRecordedWithoutAnyTick) {
    UseIse();
    table.fileToChoose = folder / "RUN.phc";
    recording.Load(plan);
    EXPECT_EQ(table.asked,
              "Would you like to save your data in a file while you are measuring|All Data(*.Tab)|*.Tab|.phc");
    RunTo(recording, 99);
    const RecordingFace& face = recording.Face();
    EXPECT_EQ(Joined(face.caption, face.lblScale, face.labtitle[1], int{face.secondBox}, int{face.mnupH[4] == nullptr}),
              "ISE Continuous Recording started at:  25/11/2026 09:05:07|ppm|Electrode 1 F (ppm)|0|1");
    EXPECT_EQ(face.Label3.substr(0, 47), "To read a particular ppm value, type in its dat");
    EXPECT_EQ(Boxes(), "20,10.00,,00:00:40,2 Sec.");
    EXPECT_TRUE(Live().ends_with("21\tF - 20\t09:05:49\t50.00\t10\t5.26E-04\t25.0\t77.0\tN/A\r\n"));
    EXPECT_EQ(recording.PrintTitle(), "ISE Continuous Recording");
    EXPECT_EQ(Joined(recording.LastValues()),
              "Data Number: 20   Time: 09:05:49,Electrode 1 F (ppm): 10.00 ppm   50.00 mV   25.0 °C");
}

TEST_F(RecordingPresenterTest, SavedRecordings) {
    const auto rows = [](int count) {
        std::vector<std::string> all;
        for (int i = 0; i < count; ++i)
            all.push_back(Joined(i + 1) + "\t" + Joined(i) + "\t09:05:07\t5.0" + Joined(i % 10) +
                          "\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0");
        return all;
    };
    struct Row {
        int rows, pointCount, shown;
    };
    state.ViewOnly = 1;
    for (const Row& row : std::initializer_list<Row>{
             {1, 20, 1}, {20, 20, 20}, {21, 50, 21}, {101, 200, 101}, {200, 200, 200}, {201, 20, 21}}) {
        RecordingPresenter viewer(state, prompts, files, clock, table, *this, Inputs());
        table.fileRows = rows(row.rows);
        viewer.Load({});
        EXPECT_EQ(Joined(viewer.Run().PointCount(), viewer.Run().Taken(), int{viewer.Run().On(0)},
                         int{viewer.Run().On(1)}, int{viewer.Face().wholeFile}, int{viewer.Face().times}),
                  Joined(row.pointCount, row.shown, 1, 0, row.shown < row.rows ? 1 : 0, 0))
            << row.rows;
        viewer.NumberEntered("0");
        EXPECT_EQ(viewer.Face().txtTT[1], "5.00");
        viewer.ShowWholeFile();
        EXPECT_EQ(viewer.Run().Taken(), row.rows);
        EXPECT_EQ(viewer.PrintTitle(), "pH Recording");
        viewer.FillTable();
        EXPECT_TRUE(table.rows.empty()) << "the table shows the file itself";
        const auto putAway = std::exchange(table.fileRows, {});
        viewer.FillTable();
        EXPECT_TRUE(table.rows == putAway) << "or the rows as they stood in it";
    }
    state.ReturnScreen = 15;
    RecordingPresenter viewer(state, prompts, files, clock, table, *this, Inputs());
    table.fileChosen = false;
    viewer.Load({});
    EXPECT_EQ(viewer.Run().Taken(), 0);
    viewer.Back();
    EXPECT_EQ(Joined(went, state.ViewOnly, state.ReturnScreen), "link menu |0|0");
}

TEST_F(RecordingPresenterTest, AFileOpenedAfterARun) {
    recording.Load(plan);
    RunTo(recording, 3);
    recording.Open();
    EXPECT_EQ(recording.Run().Taken(), 3) << "not while it runs";
    recording.Stop();
    prompts.ExpectAskToSave("Would you like to save the current data table?", false);
    table.fileRows = {"these are", "no rows"};
    prompts.ExpectMessage("The file holds no recording.");
    recording.Open();
    EXPECT_EQ(recording.Run().Taken(), 3) << "what was shown stays";
    EXPECT_EQ(Menus(), "1|0|0|1|0") << "and cannot go on, it has been declined";
    table.fileRows = {"1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\t4.00\tx\t20.0\t68.0"};
    recording.Open();
    EXPECT_EQ(Joined(recording.Run().Taken(), int{recording.Run().On(1)}, Menus()), "1|1|1|0|0|1|0");
    EXPECT_TRUE(Says("1 cell is no number in the file."));
    EXPECT_EQ(Joined(recording.LastValues()),
              "Data Number: 0   Time: 09:05:07,Electrode 1   ( Red ): 5.00 pH   118.00 mV   25.0 °C,"
              "Electrode 2   ( Blue) : 4.00 pH   N/A mV   20.0 °C");
    recording.Back();
}

TEST_F(RecordingPresenterTest, ExitAsksFirst) {
    recording.Load(plan);
    RunTo(recording, 2);
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    recording.Exit();
    EXPECT_TRUE(recording.Ticking() && prompts.lastDefaultNo);
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    prompts.ExpectAskToSave("Would you like to save the current data table?", false);
    recording.Exit();
    EXPECT_EQ(went, "link end ");
}

TEST_F(RecordingPresenterTest, RemarksOnWhatTheNumbersAre) {
    state.Channel[3] = 1;
    plan.electrode = {false, true};
    state.BufferCount[2] = 0;
    state.Reading[1] = 1000;
    state.Reading[2] = 50;
    recording.Load(plan);
    RunTo(recording, 1);
    for (const char* remark : {"Temperature sensor 1 is not connected: its °C are not real.",
                               "Electrode 2 has no calibration: its pH is an estimate.",
                               "Electrode 1 is not recorded: its pH of 0.00 in the rows is none.",
                               "1 point is beyond the scale, drawn at its edge."})
        EXPECT_TRUE(Says(remark)) << remark << "\n" << recording.Face().status;
    prompts.ExpectInput("Average Setup", "3");
    recording.Average();
    EXPECT_EQ(state.ReadAvg, 3);
    recording.ViewTable();
    EXPECT_EQ(Joined(went, table.rows.size()), "table |1");
}

}  // namespace
}  // namespace kelvo::test
