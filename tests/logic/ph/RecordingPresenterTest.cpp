#include "ph/RecordingPresenter.h"

#include <filesystem>

#include "core/Clock.h"
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
    LookedAtFile FileLookedAt() const override { return {"NIGHT.PHC", "24/11/2026", "Cl"}; }
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
    void AskedToEnd(int points, bool yes) {
        prompts.ExpectAsk("The recording is running: " + std::to_string(points) +
                              " of 21 points are taken. End it? With No it goes on.",
                          yes);
    }
    void AskedToSave(bool yes) { prompts.ExpectAskToSave("Would you like to save the current data table?", yes); }
    void ChooseLiveFile() { table.fileToChoose = folder / "RUN.phc"; }
    std::size_t Kept() const { return FindKeptRecordings(folder / "own/").size(); }
    /// Rows as the live file has them.
    std::string RowOf(int n) const { return RecordingRow(state, recording.Run().Points()[std::size_t(n)]); }
    static int Hollow(const RecordingPresenter& shown) {
        const auto& items = shown.Graph().Items();
        return static_cast<int>(
            std::count_if(items.begin(), items.end(), [](const DisplayItem& item) { return item.hollow; }));
    }
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
    DisplayList anew;
    SetTiles(recording.Run(), ScaleRow(RecordingKind::Ph, plan.scale), anew);
    const auto ink = [](const DisplayList& graph) {
        double sum = 0;
        for (const DisplayItem& item : graph.Items())
            sum += double{item.size};
        return sum;
    };
    EXPECT_EQ(ink(recording.Graph()), ink(anew)) << "drawn point by point, the marks are those of a drawing anew";
    const std::string live = Live();
    const auto& points = recording.Run().Points();
    EXPECT_EQ(Joined(Boxes(), points[2].time, points[46].time, std::count(live.begin(), live.end(), '\n'),
                     recording.Run().AsleepPoints() + recording.Run().HeldUpPoints()),
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
    const std::tuple<int, double, const char*, const char*> gaps[] = {
        {60, 60, "29 points are missing: the machine was asleep.",
         "29 points missing before it: the machine was asleep"},
        {10, 0, "4 points are missing: the program was held up.",
         "4 points missing before it: the program was held up"},
        {3, 1, "", "the machine slept 1 s before it"},
        {1, 0.1, "", ""},
        {3, 0, "", "taken 1 s late: the program was held up"}};
    for (const auto& [seconds, asleep, told, words] : gaps) {
        clock.Pass(seconds);
        slept += asleep;
        recording.Tick();
        EXPECT_TRUE(Says(told)) << recording.Face().status;
        EXPECT_EQ(recording.Run().Quality(recording.Run().Taken() - 1).remark, words);
    }
    EXPECT_EQ(recording.Run().Taken(), 9) << "and not made up for";
    recording.NumberEntered("4");
    EXPECT_TRUE(Says("Point 4, 09:07:55: 29 points missing before it: the machine was asleep."));
}

TEST_F(RecordingPresenterTest, BetweenPointsItTellsWhatIsMeasuredNow) {
    plan.interval = 8;
    state.ReadAvg = 10;
    frameAge.reset();
    Start(1);
    state.Reading[0] = 177;
    const std::tuple<int, std::optional<double>, const char*> moments[] = {
        {0, std::nullopt, "No reading yet     1 of 21 points, the next in 00:30:00"},
        {1, 0.5, "Now:  4.00 pH, 177.00 mV, 25.0 °C     1 of 21 points, the next in 00:29:59"},
        {1739, 12, "12 s ago:  4.00 pH, 177.00 mV, 25.0 °C     1 of 21 points, the next in 00:01:00"}};
    for (const auto& [pass, age, line] : moments) {
        clock.Pass(pass);
        frameAge = age;
        EXPECT_FALSE(pass > 1000 ? (recording.Tick(), false) : recording.Tick());
        recording.ShowLive();
        EXPECT_EQ(recording.Face().live, line);
    }
    recording.Stop();
    EXPECT_TRUE(recording.Face().live.ends_with("1 of 21 points, paused")) << recording.Face().live;
}

TEST_F(RecordingPresenterTest, ARunningRecordingEndsOnlyWhenToldTo) {
    ChooseLiveFile();
    Start(2);
    AskedToEnd(2, false);
    recording.Back();
    EXPECT_TRUE(recording.Ticking() && prompts.lastDefaultNo && went.empty());
    recording.Stop();
    prompts.ExpectMessage("Your data have been saved: " + (folder / "RUN.phc"));
    table.fileChosen = false;
    recording.Open();
    recording.Restart();
    RunTo(recording, 3);
    const std::string live = Live();
    EXPECT_EQ(Joined(Menus(), std::count(live.begin(), live.end(), '\n')), "0|1|0|0|0|5")
        << "a file that was not chosen leaves the paused one as it was";
    for (const bool sure : {false, true}) {
        prompts.ExpectAsk("Are you sure you want to exit?", sure);
        if (sure) prompts.ExpectMessage("Your data have been saved: " + (folder / "RUN.phc"));
        recording.Exit();
        EXPECT_EQ(went, sure ? "link end " : "");
    }
}

TEST_F(RecordingPresenterTest, ALiveFileChangedElsewhereIsKeptAndTold) {
    ChooseLiveFile();
    Start(2);
    const std::string changed = Live() + "a remark\r\n";
    folder.Put("RUN.phc", changed);
    RunTo(recording, 3);
    const std::string told =
        "RUN.phc was changed by another program or by hand. What that has made of it is kept as "
        "\"RUN (changed elsewhere).phc\"; RUN.phc holds the whole recording again.";
    EXPECT_TRUE(Says(told) && recording.Trouble());
    EXPECT_EQ(folder.Get("RUN (changed elsewhere).phc"), changed);
    folder.Put("RUN.phc", "somebody else's");
    RunTo(recording, 4);
    prompts.ExpectMessage(told);
    prompts.ExpectMessage(
        "RUN.phc was changed elsewhere once more and is left as it is. The recording goes on, whole, "
        "in \"RUN (2).phc\".");
    recording.TellTroubles();
    EXPECT_EQ(Joined(Live(), state.TableFile), "somebody else's|" + (folder / "RUN (2).phc"));
    const std::string whole = folder.Get("RUN (2).phc");
    EXPECT_EQ(std::count(whole.begin(), whole.end(), '\n'), 2 + 4);
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
    const char* const told[] = {"Point 1, 09:05:11: frame 12 s old; hollow in the graph.",
                                "Point 2, 09:05:13: no frame had come; hollow in the graph.", "Point 3, 09:05:15."};
    for (int i = 0; i < 3; ++i) {
        recording.NumberEntered(std::to_string(i + 1));
        EXPECT_TRUE(Says(told[i]) && recording.Face().doubtful[0] == (i < 2)) << told[i];
    }
    EXPECT_EQ(Hollow(recording), 2);
}

TEST_F(RecordingPresenterTest, WhatIsKnownOfItsPointsComesBackWithTheFile) {
    plan.atc[0] = true;
    state.Channel[3] = 1;
    state.PhCaliDate[1] = "10/11/2026 08:00";
    ChooseLiveFile();
    Start(1);
    state.Reading[1] = 0;
    RunTo(recording, 2);
    EXPECT_TRUE(Says("Electrode 1: calibrated 15 days ago."));
    EXPECT_TRUE(Says("Temperature sensor 1 is not connected: its °C are not real."));
    state.Reading[1] = 745.8f;
    frameAge = 12;
    RunTo(recording, 3);
    EXPECT_TRUE(Says("1 point is without temperature sensor 1."));
    EXPECT_EQ(
        folder.Get("RUN.phc.rows"),
        FactsHeading("RUN.phc") +
            FactsLine(1, RowOf(0), {{fact::Quality1, "calibrated 15 days ago"}, {fact::Quality2, "not recorded"}}) +
            FactsLine(2, RowOf(1),
                      {{fact::Quality1, "sensor 1 not connected: no ATC; calibrated 15 days ago"},
                       {fact::Quality2, "not recorded"}}) +
            FactsLine(3, RowOf(2),
                      {{fact::Quality1, "frame 12 s old; calibrated 15 days ago"}, {fact::Quality2, "not recorded"}}));
    recording.FillTable();
    ASSERT_EQ(table.facts.size(), 3u);
    EXPECT_EQ(table.facts[2].Get(fact::Quality1), "frame 12 s old; calibrated 15 days ago");

    state.ViewOnly = 1;
    table.fileRows = table.rows;
    table.fileFacts = table.facts;
    table.fileFacts[1].Set(fact::Remark, "the machine slept 1 s before it");
    table.fileFacts[0].Set(fact::Quality1, "no calibration: an estimate");
    RecordingPresenter viewer(state, prompts, files, clock, table, *this, Inputs());
    viewer.Load({});
    EXPECT_EQ(Joined(viewer.Face().caption, viewer.Run().On(0), viewer.Run().On(1), Hollow(viewer)),
              "pH Recording: NIGHT.PHC, 24/11/2026|1|0|1");
    EXPECT_EQ(viewer.Face().status,
              "1 point is of an old frame (hollow). 1 point has a remark on what lies before; "
              "\"Data Number\" and the table tell it. 1 point is without temperature sensor 1. "
              "1 point is estimated: electrode 1 had no calibration.");
    viewer.NumberEntered("1");
    EXPECT_TRUE(viewer.Face().status.starts_with(
        "Point 1, 09:05:11: sensor 1 not connected: no ATC; calibrated 15 days ago; the machine slept 1 s before it. "))
        << viewer.Face().status;
    table.fileFacts.clear();
    viewer.Load({});
    EXPECT_EQ(Joined(viewer.Run().On(1), Hollow(viewer)), "0|0") << "a column of 0.00 is no trace";
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
                other.Stop();
                AskedToSave(false);
                other.Back();
            }
        }
        EXPECT_EQ(Joined(Kept(), RecordingsPutAside(folder / "own/").size()), Joined(kept, 1 - kept)) << name;
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
    AskedToEnd(5, true);
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
    std::filesystem::create_directory(folder / "disk");
    folder.Put("disk/RUN.phc", "somebody else's");
    EXPECT_EQ(recording.Unsaved()[0].file, "") << "nothing strange is replaced unseen";
    RecordingPresenter other(state, prompts, files, clock, table, *this, Inputs());
    table.fileToChoose = "-999";
    state.TableFile.clear();
    other.Load(plan);
    RunTo(other, 4);
    EXPECT_TRUE(other.Trouble() && other.Run().Taken() == 4) << "no box has held a point";
    EXPECT_EQ(other.Unsaved().size(), 1u);
    prompts.ExpectMessage("Error76Saving" + (folder / "own/") + ":Path not found.");
    other.TellTroubles();
}

TEST_F(RecordingPresenterTest, APointBehindTheLastBoxIsNotLost) {
    struct : ScriptedPrompts {
        std::function<void()> behind;
        void Message(const std::string&, const std::string&, Icon) override { behind(); }
    } boxes;
    RecordingPresenter run(state, boxes, files, clock, table, *this, Inputs());
    std::filesystem::create_directory(folder / "disk");
    table.fileToChoose = folder / "disk/RUN.phc";
    run.Load(plan), RunTo(run, 2);
    boxes.behind = [&] { std::filesystem::remove_all(folder / "disk"), RunTo(run, 4); };
    boxes.ExpectAsk("The recording is running: 2 of 21 points are taken. End it? With No it goes on.", true);
    boxes.ExpectAskToSave("Would you like to save the current data table?", false);
    run.Back();
    EXPECT_EQ(RecordingsPutAside(folder / "own/").at(0).points, 4);
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
    EXPECT_FALSE(Says("one point"));
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
                  Joined("5.00", count, "pH Recording: NIGHT.PHC, 24/11/2026"));
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
    EXPECT_EQ(Joined(recording.Run().Taken(), Menus()), "3|1|0|1|1|0") << "what was recorded stays, and can go on";
    AskedToSave(false);
    table.fileRows = {"1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\t4.00\tx\t20.0\t68.0"};
    recording.Open();
    EXPECT_EQ(Joined(recording.Run().Taken(), recording.Run().On(1), Menus()), "1|1|1|0|0|1|0");
    EXPECT_TRUE(Says("1 cell is no number in the file."));
    EXPECT_EQ(Joined(recording.LastValues()),
              "Data Number: 0   Time: 09:05:07,Electrode 1   ( Red ): 5.00 pH   118.00 mV   25.0 °C,"
              "Electrode 2   ( Blue) : 4.00 pH   N/A mV   20.0 °C");
    recording.Back();
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
