#include "ph/RecordingPresenter.h"

#include <filesystem>

#include "core/NotedTable.h"
#include "ph/RecordingFixture.h"

namespace kelvo::test {
namespace {

class RecordingPresenterTest : public RecordingFixture, protected RecordingHost {
 protected:
    RecordingPresenterTest() { table.fileToChoose = "-999"; }

    /// Runs until `points` are taken, each tick at its moment.
    void RunTo(RecordingPresenter& run, int points) {
        while (run.Ticking() && run.Run().Taken() < points) {
            clock.Pass(static_cast<int>(std::lround(run.NextTick() - clock.steady)));
            run.Tick();
        }
    }

    void Start(int points) { recording.Load(plan), RunTo(recording, points); }

    void ShowSetup() override { went += "setup "; }
    void ShowMenu() override { went += "menu "; }
    void ShowTable() override { went += "table "; }
    void EndProgram() override { went += "end "; }
    void StopLink() override { went += "link "; }
    bool Ending() const override { return ending; }

    NotedTable table{state};
    bool ending = false;
    std::string went;

    /// File, Stop, Re-start, hint, busy.
    std::string Menus() const {
        const RecordingFace& face = recording.Face();
        return Joined(face.mnuF, face.mnuStop, face.mnuStart, face.hint, face.busy);
    }
    std::string Boxes() const { return Joined(recording.Face().txtTT); }
    std::string Live() const { return folder.Get("RUN.phc"); }
    /// A run whose live file goes with its folder.
    void LoadAndLoseTheLiveFile() {
        std::filesystem::create_directory(folder / "disk");
        table.fileToChoose = folder / "disk/RUN.phc";
        recording.Load(plan);
        std::filesystem::remove_all(folder / "disk");
    }
    void AskedToSave(bool yes) { prompts.ExpectAskToSave("Would you like to save the current data table?", yes); }
    void ChooseLiveFile() { table.fileToChoose = folder / "RUN.phc"; }
    std::size_t Kept() const { return FindKeptRecordings(folder / "own/").size(); }
    bool Says(const std::string& remark) const { return recording.Face().status.find(remark) != std::string::npos; }

    RecordingPresenter recording{state, prompts, files, clock, table, *this, Inputs()};
};

TEST_F(RecordingPresenterTest, ARunFromItsStartToItsEnd) {
    ChooseLiveFile();
    recording.Load(plan);
    EXPECT_EQ(table.asked,
              "Would you like to save your data in a file while you are measuring|All Data(*.phc)|*.phc|*.phc|.phc");
    EXPECT_EQ(recording.Face().caption, "pH Continuous Recording started at:  25/11/2026 09:05:07");
    EXPECT_EQ(Joined(Boxes(), Menus()), ",,,00:00:00,2 Sec.|0|1|0|0|1");
    RunTo(recording, 1);
    EXPECT_EQ(clock.now.second, 9) << "point 0 is taken a whole interval after the start";
    EXPECT_EQ(Joined(Boxes(), Menus()), "0,5.00,,00:00:00,2 Sec.|0|1|0|0|1");
    RunTo(recording, 2);
    EXPECT_EQ(Joined(Boxes(), Menus()), "1,5.00,,00:00:02,2 Sec.|0|1|0|0|0")
        << "the busy cursor goes with the second point";
    EXPECT_EQ(Live(), table.LiveHead() + "1\t0\t09:05:09\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0\r\n" +
                          "2\t1\t09:05:11\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0\r\n");
    RunTo(recording, 99);
    EXPECT_EQ(Joined(Boxes(), Menus(), clock.steady, recording.Ticking()), "20,5.00,,00:00:40,2 Sec.|1|0|0|1|0|1042|0");
    EXPECT_TRUE(Says("The recording has ended: 21 of 21 points."));
    prompts.ExpectMessage("Your data have been saved: " + (folder / "RUN.phc"));
    state.IsePath[1] = 1;
    recording.Back();
    EXPECT_EQ(
        Joined(went, state.ReturnScreen, state.TableOpen, state.TableFile, state.ViewOnly, state.PhPath, state.IsePath),
        "link menu |0|0||0|0,0,0,1,0|0,0,0");
}

TEST_F(RecordingPresenterTest, TheLongestRunGoesOverMidnightAndAClockChange) {
    plan.interval = 8;
    plan.period = 3;
    state.DateFormat = 1;
    ChooseLiveFile();
    Start(2);
    EXPECT_EQ(Joined(recording.Face().caption, recording.Face().txtTT[3]),
              "pH Continuous Recording started at:  11/25/2026 09:05:07|00:30:00");
    clock.now.hour = 2;  // the wall clock is set back
    RunTo(recording, 201);
    EXPECT_EQ(clock.steady, 1000 + 201 * 1800.0) << "100 hours 30 minutes";
    const std::string live = Live();
    const auto& points = recording.Run().Points();
    EXPECT_EQ(Joined(Boxes(), points[2].time, points[46].time, std::count(live.begin(), live.end(), '\n'),
                     recording.Run().MissedPoints()),
              "200,5.00,,100:00:00,30 Min.|02:35:07|00:35:07|203|0");
}

TEST_F(RecordingPresenterTest, StopAndRestartGoOnAtTheSamePoint) {
    Start(3);
    recording.Stop();
    EXPECT_EQ(Menus(), "1|0|1|1|0");
    clock.Pass(100);
    recording.Tick();
    recording.Restart();
    EXPECT_EQ(Joined(recording.Run().Taken(), Menus()), "3|0|1|0|0|0");
    RunTo(recording, 4);
    EXPECT_EQ(Joined(Boxes(), recording.Run().Points()[3].time, Says("missing")), "3,5.00,,00:00:06,2 Sec.|09:06:55|0")
        << "the pause does not show";
    clock.Pass(60);
    recording.Tick();
    EXPECT_TRUE(Says("29 points are missing: the machine was asleep."));
    EXPECT_EQ(recording.Run().Taken(), 5) << "and not made up for";
}

TEST_F(RecordingPresenterTest, AGapIsTold) {
    Start(1);
    frameAge = 12;
    RunTo(recording, 2);
    EXPECT_TRUE(recording.Face().doubtful[0]);
    frameAge = std::nullopt;
    RunTo(recording, 3);
    EXPECT_TRUE(Says("2 points are of an old frame (hollow)."));
    frameAge = 0;
    RunTo(recording, 4);
    EXPECT_FALSE(recording.Face().doubtful[0]);
    const char* const told[] = {"Point 1, 09:05:11: its frame was 12 s old, hollow in the graph.",
                                "Point 2, 09:05:13: no frame had come from the interface.", "Point 3, 09:05:15."};
    for (int i = 0; i < 3; ++i) {
        recording.NumberEntered(std::to_string(i + 1));
        EXPECT_TRUE(Says(told[i]) && recording.Face().doubtful[0] == (i < 2)) << told[i];
    }
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
    const std::tuple<const char*, const char*, const char*> rows[] = {{"0", "0,5.00,7.00,00:00:00", nullptr},
                                                                      {"4", "4,4.00,7.00,00:08:00", nullptr},
                                                                      {" 1.5x", " 1.5x,5.00,7.00,00:04:00", nullptr},
                                                                      {"", ",5.00,7.00,00:00:00", nullptr},
                                                                      {"5", ",,,", outside},
                                                                      {"21", ",,,", outside},
                                                                      {"1E9", ",,,", outside},
                                                                      {"-1", "-1,,,", fault},
                                                                      {"-1E9", "-1E9,,,", fault}};
    for (const auto& [number, boxes, message] : rows) {
        if (message != nullptr) prompts.ExpectMessage(message);
        recording.NumberEntered(number);
        EXPECT_EQ(Boxes(), std::string(boxes) + ",2 Min.") << number;
    }
    recording.NumberTyped("1");
    recording.ToggleHint();
    EXPECT_TRUE(recording.Face().hint);
    RunTo(recording, 6);
    EXPECT_EQ(Boxes(), "5,4.00,7.00,00:10:00,2 Min.") << "a number left half typed does not stop the boxes";
    clock.Pass(115);
    recording.NumberTyped("1");
    RunTo(recording, 7);
    EXPECT_EQ(Boxes(), "1,4.00,7.00,00:12:00,2 Min.") << "one being typed stays";
}

TEST_F(RecordingPresenterTest, ADeclinedRunIsAskedForOnLeaving) {
    Start(3);
    EXPECT_EQ(Joined(state.TableOpen, std::distance(std::filesystem::directory_iterator(folder / "own/"), {})), "1|1");
    for (int i = 0; i < 3; ++i)
        AskedToSave(true);
    table.saves = {SaveOutcome::Cancelled, SaveOutcome::Failed, SaveOutcome::Saved};
    table.whileSaving = [this] { RunTo(recording, recording.Run().Taken() + 1); };
    recording.New();
    EXPECT_EQ(table.saved.size(), 6u) << "points taken while the file dialog stood are in it";
    EXPECT_EQ(table.saved[5].substr(0, 13), "6\t5\t09:05:19\t");
    EXPECT_EQ(Joined(went, recording.Ticking(), std::filesystem::is_empty(folder / "own/")), "link setup |0|1");
}

TEST_F(RecordingPresenterTest, WhatBecomesOfTheJournal) {
    const std::tuple<const char*, bool, bool, std::size_t> rows[] = {
        {"declined", true, false, 0},
        {"the session ends behind the question", true, true, 1},
        {"the program is killed", false, false, 1}};
    for (const auto& [name, asked, ends, kept] : rows) {
        ending = ends;
        {
            RecordingPresenter other(state, prompts, files, clock, table, *this, Inputs());
            other.Load(plan);
            RunTo(other, 2);
            if (asked) {
                AskedToSave(false);
                other.Back();
            }
        }
        EXPECT_EQ(Kept(), kept) << name;
        std::filesystem::remove_all(folder / "own/");
    }
}

TEST_F(RecordingPresenterTest, ALiveFileThatCannotBeWritten) {
    LoadAndLoseTheLiveFile();
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
    AskedToSave(true);
    recording.Back();
    EXPECT_EQ(Joined(table.saved.size(), Kept()), "5|0");
}

TEST_F(RecordingPresenterTest, RowsThatNeitherFileHoldsAreHandedOutAtTheEnd) {
    LoadAndLoseTheLiveFile();
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
    Start(2);
    state.Buffers1[2] = {0, 7, 177};
    RunTo(recording, 5);
    EXPECT_EQ(Joined(Menus(), recording.Run().Taken()), "1|0|1|1|0|2");
    prompts.ExpectMessage("Bad calibration data, please re-do the calibration");
    recording.TellTroubles();
}

TEST_F(RecordingPresenterTest, NoElectrodeNoRun) {
    plan.electrode = {};
    prompts.ExpectMessage("Click on 'File/New' to select a channel, or click on 'File/Open' to read a file");
    recording.Load(plan);
    EXPECT_EQ(Joined(Menus(), recording.Ticking()), "1|0|0|0|0|0");
    recording.Back();
    EXPECT_EQ(went, "link menu ");
}

TEST_F(RecordingPresenterTest, AnIonIsRecordedWithoutAnyTick) {
    UseIse();
    ChooseLiveFile();
    recording.Load(plan);
    EXPECT_EQ(table.asked,
              "Would you like to save your data in a file while you are measuring|All Data(*.Tab)|*.Tab|*.Tab|.phc");
    RunTo(recording, 99);
    const RecordingFace& face = recording.Face();
    EXPECT_EQ(Joined(face.caption, face.lblScale, face.labtitle[1], face.secondBox, face.mnupH[4] == nullptr),
              "ISE Continuous Recording started at:  25/11/2026 09:05:07|ppm|Electrode 1 F (ppm)|0|1");
    EXPECT_EQ(Joined(face.Label3.substr(0, 30), Boxes()), "To read a particular ppm value|20,10.00,,00:00:40,2 Sec.");
    EXPECT_TRUE(Live().ends_with("21\tF - 20\t09:05:49\t50.00\t10\t5.26E-04\t25.0\t77.0\tN/A\r\n"));
    EXPECT_EQ(
        Joined(recording.PrintTitle(), recording.LastValues()),
        "ISE Continuous Recording|Data Number: 20   Time: 09:05:49,Electrode 1 F (ppm): 10.00 ppm   50.00 mV   25.0 °C");
}

TEST_F(RecordingPresenterTest, SavedRecordings) {
    const auto rows = [](int count) {
        std::vector<std::string> all;
        for (int i = 0; i < count; ++i)
            all.push_back(Joined(i + 1) + "\t" + Joined(i) + "\t09:05:07\t5.0" + Joined(i % 10) +
                          "\t118.00\t25.0\t77.0\tN/A\tN/A\t20.0\t68.0");
        return all;
    };
    state.ViewOnly = 1;
    const std::tuple<int, int, int> counts[] = {{1, 20, 1}, {21, 50, 21}, {200, 200, 200}, {201, 20, 21}};
    for (const auto& [count, pointCount, shown] : counts) {
        RecordingPresenter viewer(state, prompts, files, clock, table, *this, Inputs());
        table.fileRows = rows(count);
        viewer.Load({});
        EXPECT_EQ(Joined(viewer.Run().PointCount(), viewer.Run().Taken(), viewer.Run().On(0), viewer.Run().On(1),
                         viewer.Face().wholeFile, viewer.Face().times),
                  Joined(pointCount, shown, 1, 0, shown < count, 0));
        viewer.NumberEntered("0");
        viewer.ShowWholeFile();
        EXPECT_EQ(Joined(viewer.Face().txtTT[1], viewer.Run().Taken(), viewer.PrintTitle()),
                  Joined("5.00", count, "pH Recording"));
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
    viewer.Back();
    EXPECT_EQ(Joined(viewer.Run().Taken(), went, state.ViewOnly, state.ReturnScreen), "0|link menu |0|0");
}

TEST_F(RecordingPresenterTest, AFileOpenedAfterARun) {
    Start(3);
    recording.Open();
    EXPECT_EQ(recording.Run().Taken(), 3) << "not while it runs";
    recording.Stop();
    AskedToSave(false);
    table.fileRows = {"these are", "no rows"};
    prompts.ExpectMessage("The file holds no recording.");
    recording.Open();
    EXPECT_EQ(Joined(recording.Run().Taken(), Menus()), "3|1|0|0|1|0") << "what was shown stays, and cannot go on";
    table.fileRows = {"1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\t4.00\tx\t20.0\t68.0"};
    recording.Open();
    EXPECT_EQ(Joined(recording.Run().Taken(), recording.Run().On(1), Menus()), "1|1|1|0|0|1|0");
    EXPECT_TRUE(Says("1 cell is no number in the file."));
    EXPECT_EQ(Joined(recording.LastValues()),
              "Data Number: 0   Time: 09:05:07,Electrode 1   ( Red ): 5.00 pH   118.00 mV   25.0 °C,"
              "Electrode 2   ( Blue) : 4.00 pH   N/A mV   20.0 °C");
    recording.Back();
}

TEST_F(RecordingPresenterTest, ExitAsksFirst) {
    Start(2);
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    recording.Exit();
    EXPECT_TRUE(recording.Ticking() && prompts.lastDefaultNo);
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    AskedToSave(false);
    recording.Exit();
    EXPECT_EQ(went, "link end ");
}

TEST_F(RecordingPresenterTest, RemarksOnWhatTheNumbersAre) {
    state.Channel[3] = 1;
    plan.electrode = {false, true};
    state.BufferCount[2] = 0;
    state.Reading[1] = 1000;
    state.Reading[2] = 50;
    Start(1);
    for (const char* remark : {"Temperature sensor 1 is not connected: its °C are not real.",
                               "Electrode 2 has no calibration: its pH is an estimate.",
                               "Electrode 1 is not recorded: its pH of 0.00 in the rows is none.",
                               "1 point is beyond the scale, drawn at its edge."})
        EXPECT_TRUE(Says(remark)) << remark << "\n" << recording.Face().status;
    prompts.ExpectInput("Average Setup", "3");
    recording.Average();
    recording.ViewTable();
    EXPECT_EQ(Joined(state.ReadAvg, went, table.rows.size()), "3|table |1");
}

}  // namespace
}  // namespace kelvo::test
