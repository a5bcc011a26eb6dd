#include "addition/AdditionPresenter.h"

#include <deque>
#include <functional>

#include "app/AppState.h"
#include "core/NotedTable.h"
#include "core/Routes.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

class AdditionPresenterTest : public testing::Test, private AdditionView {
 protected:
    AdditionPresenterTest() {
        state.IonIndex = 10;
        state.CaliSlope = -58;
        state.FileTemp = "25";
        state.FileDate = "23/11/2026 10:00";
        state.AppPath = state.DataPath = folder.Path();
        state.TableOpen = 1;
        table.fileToChoose = "A.SDT";
        standard.Load();
    }
    void Fill() {
        for (const auto& [box, text] : {std::pair{0, "50"}, {3, "20"}, {9, "1000"}, {14, "80"}, {15, "51"}, {1, "25"}})
            standard.Form().Edited(box, text), standard.Form().Enter(box);
    }
    std::string Ticked() const { return Joined(standard.Ticked(0), standard.Ticked(1)); }

    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    NotedTable table{state};
    ScratchFolder folder;
    AdditionPresenter standard{state, prompts, files, clock, table, StandardAddition, *this};
    AdditionPresenter sample{state, prompts, files, clock, table, SampleAddition, *this};
    std::string shown;                           ///< what the presenter asked of its view
    std::deque<std::function<void()>> readings;  ///< what happens while the reading dialog is up
    std::function<void()> atOpening;             ///< what happens as it opens
    bool ended = false;
    int stateShown = 0;

 private:
    void ShowState() override { ++stateShown; }
    void OpenReading() override {
        shown += "open ";
        if (atOpening) atOpening();
    }
    void Read() override {
        shown += "read ";
        ASSERT_FALSE(readings.empty());
        const auto reading = std::move(readings.front());
        readings.pop_front();
        reading();
    }
    void CloseReading() override { shown += "close "; }
    void ShowTable() override { shown += "table "; }
    void AskSampleNumber() override { shown += "number "; }
    void ShowCalibrationSetup() override { shown += "setup " + std::to_string(state.ReturnScreen); }
    void GoToMenu() override { shown += "menu "; }
    void EndProgram() override { shown += "end "; }
    bool Ended() const override { return ended; }
};

TEST_F(AdditionPresenterTest, ARowGoesToTheTable) {
    EXPECT_EQ(Joined(state.ReturnScreen, state.TableOpen, standard.TablePrintOffered(), Ticked(), table.head),
              "23|0|0|1|0|23/11/2026 10:00|-58|25.0|77.0|F");
    prompts.ExpectInput("Average Setup", "5");
    standard.SetAverage();
    EXPECT_EQ(state.ReadAvg, 5);
    Fill();
    prompts.ExpectAskToSave("Would you like to save these data?", true);
    standard.Form().Press(AdditionForm::CalculateButton);
    EXPECT_EQ(Joined(table.calls, table.asked, shown, standard.TablePrintOffered()),
              "ask keep |at once|All Data(*.sdt)|*.sdt|*.sdt|.sdt|number |1");
    EXPECT_EQ(table.head, "23/11/2026 10:00|-58|25.0|77.0|F");
    EXPECT_EQ(table.rows.at(0), " 1\t\t09:05\t25\t 77\t50\t2.0\t1000\t5.26E-2\t80\t51\t17.48\t9.20E-4");
    EXPECT_EQ(
        table.facts.at(0),
        (RowFacts{{"slope", "-58"},
                  {"celsius", "25.0"},
                  {"low", "16.94"},
                  {"high", "18.01"},
                  {"unit", "ppm"},
                  {"basis",
                   "0.10 mV in each potential (assumed), 1 % in each volume (assumed) and a slope taken as exact"}}));
    const auto question =
        "The result does not follow from the values that stand in the boxes now. Would you like to save it all the same?";
    standard.Form().Edited(14, "8\t0");
    standard.Form().Edited(11, "-57");
    prompts.ExpectAsk(question, false);
    standard.SaveRow();
    EXPECT_EQ(Joined(table.rows.size(), prompts.lastDefaultNo, standard.Form().TakeFocus()),
              Joined(1, 1, FormModel::FirstButton));
    prompts.ExpectAsk(question, true);
    standard.SaveRow();
    EXPECT_EQ(table.facts.at(1),
              (RowFacts{{"slope", "-58"}, {"celsius", "25.0"}, {"remark", "The result is not of these values"}}));
    EXPECT_EQ(table.rows.at(1).substr(table.rows.at(1).find("\t8 0\t")), "\t8 0\t51\t17.48\t9.20E-4");
    const std::string file = std::exchange(table.fileToChoose, {});
    standard.New();
    standard.SaveRow();
    EXPECT_EQ(table.rows.size(), 2u) << "no name, no row";
    table.saves = {SaveOutcome::Failed, SaveOutcome::Saved};
    for (const char* after : {"1|A.SDT", "0|"}) {
        standard.SaveTable();
        EXPECT_EQ(Joined(state.TableOpen, state.TableFile), after) << "rows that could not be written stay unsaved";
    }
    sample.Load();
    table.calls.clear();
    table.fileToChoose = file;
    sample.SaveRow();
    EXPECT_EQ(Joined(state.ReturnScreen, table.calls, table.asked),
              "22|ask keep |at once|All Data(*.smt)|*.smt|*.smt|.smt");
}

TEST_F(AdditionPresenterTest, EveryWayOutPutsTheTableQuestion) {
    // name, way, what is asked of the table and of the view, ReturnScreen afterwards
    const std::tuple<const char*, std::function<void()>, const char*, const char*, int> rows[] = {
        {"new", [&] { standard.New(); }, "prompt ", "", 23},
        {"back", [&] { standard.Back(); }, "prompt unload 0 ", "menu ", 0},
        {"escape", [&] { standard.Escape(); }, "prompt unload 0 ", "menu ", 0},
        {"exit", [&] { prompts.ExpectAsk("Are you sure you want to exit?", true), standard.Exit(); }, "prompt ", "end ",
         23},
        {"no exit", [&] { prompts.ExpectAsk("Are you sure you want to exit?", false), standard.Exit(); }, "", "", 23},
        {"open", [&] { files.Expect({}), standard.OpenMeasurement(); }, "leave ", "", 23},
        {"calibrate",
         [&] {
             state.CaliSlope = 0;
             prompts.ExpectAskToSave(text::NoCalibrationForIon, true), standard.Form().Select(0, 10);
         },
         "leave ", "setup 23", 23},
    };
    for (const auto& [name, way, ofTable, ofView, returnScreen] : rows) {
        table.calls.clear();
        shown.clear();
        state.CaliSlope = -58;
        standard.Load();
        state.PhPath[1] = 1;
        way();
        EXPECT_EQ(Joined(table.calls, shown, state.ReturnScreen, state.PhPath[1]),
                  Joined(ofTable, ofView, returnScreen, returnScreen == 0 ? 0 : 1))
            << name;
        EXPECT_TRUE(prompts.lastDefaultNo || std::string(name) != "exit");
    }
    EXPECT_EQ(Joined(state.HelpTopic, state.CaliDirty), "0|1");
}

TEST_F(AdditionPresenterTest, TheTableShownHasTheHeadOfThisScreen) {
    int slope = -50;
    for (const auto way : {&AdditionPresenter::ViewTable, &AdditionPresenter::OpenTable, &AdditionPresenter::SaveTable,
                           &AdditionPresenter::SaveRow}) {
        standard.Form().Edited(AdditionForm::Slope, std::to_string(++slope));
        (standard.*way)();
        EXPECT_EQ(table.head, "23/11/2026 10:00|" + std::to_string(slope) + "|25.0|77.0|F");
    }
    EXPECT_EQ(shown, "table table number ");
}

TEST_F(AdditionPresenterTest, AnotherIonStartsAnotherTable) {
    state.CaliDirty = 1;
    standard.SaveRow();
    standard.Form().Select(0, 5);
    standard.ViewTable();
    EXPECT_EQ(table.head.back(), 'F') << "the rows in the table are those of F";
    standard.SaveRow();
    EXPECT_EQ(
        Joined(table.calls, table.head, state.CaliDirty, table.facts.back().Get("remark")),
        "ask keep leave ask keep |23/11/2026 10:00|-58|25.0|77.0|Cl|1|The slope is that of the calibration for F, "
        "not for Cl");
    EXPECT_TRUE(standard.Status().starts_with("The table of F has been put away. The slope"));
}

TEST_F(AdditionPresenterTest, EscapeLeadsNoTypedBoxAway) {
    standard.Form().Edited(0, "50");
    standard.Escape();
    EXPECT_EQ(shown, "");
    EXPECT_EQ(standard.Status(),
              "\"Back\" leaves this screen; the boxes are kept by File, Save, Screen and by Save Data only.");
    standard.Form().Edited(0, "51");
    EXPECT_EQ(standard.Status(), "") << "what was said goes with the next entry";
}

TEST_F(AdditionPresenterTest, AMeasurementIsSavedAndOpened) {
    // The caption, the first potential, and whether entries are unsaved.
    const auto seen = [this] { return Joined(standard.Caption(), standard.Form().Text(14), standard.HoldsUnsaved()); };
    Fill();
    files.Expect(std::nullopt);
    standard.SaveMeasurement();
    EXPECT_EQ(seen(), "Kelvo : Standard Addition Method|80|1");
    files.Expect(folder / "lake");
    standard.SaveMeasurement();
    EXPECT_EQ(standard.Status(), "Saved to lake.std.");
    EXPECT_EQ(seen(), "STANDARD ADDITION METHOD:" + folder / "lake.std" + "|80|0");
    standard.Form().Edited(14, "81");
    files.Expect(std::nullopt);
    standard.OpenMeasurement();
    EXPECT_EQ(seen(), "STANDARD ADDITION METHOD:" + folder / "lake.std" + "|81|1") << "no file, no change";
    files.Expect("lake.std");
    standard.OpenMeasurement();
    EXPECT_EQ(seen(), "SATNDARD ADDITION METHOD:" + folder / "lake.std" + "|80|0");
    // The other method's file, by its name and by its result: 1000·(52·√10/50 − 2/50) ppm.
    MethodDump dump = standard.Form().Dump();
    for (const char* name : {"b.smp", "b.old"}) {
        folder.Put(name, MethodDumpBytes(dump));
        files.Expect(folder / name);
        standard.OpenMeasurement();
        EXPECT_TRUE(
            standard.Status().starts_with("This is a file of sample addition: its boxes mean something else here."));
        dump.Box[16] = "3248.77", dump.Box[17] = "1.71E-1";
    }
    stateShown = 0;
    standard.New();
    EXPECT_EQ(Joined(stateShown, standard.Form().Text(0), standard.Caption()), "1||Kelvo : Standard Addition Method");
}

TEST_F(AdditionPresenterTest, BothPotentialsAreReadOnLine) {
    Fill();
    readings = {[&] {
                    standard.ShowTemperature("24.5", "76.1");
                    EXPECT_EQ(Joined(state.ReadingText, standard.CalibrationCelsius()), "80|25.0");
                    standard.TakeReading("79.10");
                },
                [&] {
                    EXPECT_EQ(standard.Form().Text(14), "79.10");
                    standard.TakeReading("50.20");
                }};
    state.ASD = 0;
    standard.Tick(1, true);
    EXPECT_EQ(Joined(std::exchange(shown, {}), standard.Form().Text(15), standard.Form().Text(1),
                     standard.Form().Text(2), Ticked()),
              "open read read close |50.20|24.5|76.1|0|1");
    standard.Tick(0, true);
    EXPECT_EQ(Ticked(), "1|0");
    // Given up at the first, at the second, and the program ended under the dialog.
    const auto give_up = [&] { standard.CancelReading(); };
    readings = {give_up};
    standard.Tick(1, true);
    readings = {[&] { standard.TakeReading("78.00"); }, give_up};
    standard.Tick(1, true);
    EXPECT_EQ(Joined(standard.Form().Text(14), standard.Form().Text(15)), "78.00|50.20");
    readings = {[&] { ended = true; }};
    standard.Tick(1, true);
    EXPECT_EQ(shown, "open read close open read read close open read ");
    ended = false;
    standard.New();
    EXPECT_EQ(Ticked(), "1|0") << "a new measurement begins by keyboard";
    stateShown = 0;
    standard.ShowTemperature("20.0", "68.0");
    EXPECT_EQ(stateShown, 1) << "while the dialog is up";
}

TEST_F(AdditionPresenterTest, TheDialogAsksForWhatIsToBeDone) {
    const std::tuple<AdditionPresenter*, std::string, std::string> rows[] = {
        {&standard, "Please immerse the electrode in the sample,", "Please add standard to the sample,"},
        {&sample, "Please immerse the electrode in the standard solution,", "Please add sample to the standard,"}};
    for (const auto& [method, first, second] : rows)
        for (const std::int16_t asd : {0, 1, 0}) {  // 0 again: both are read once more
            state.ASD = asd;
            const char* ending = asd == 0 ? " when the reading is stable, click on 'OK'." : " then click on 'Ok'";
            std::string asked;
            const auto ask = [&asked, m = method] { asked += m->ReadingPrompt() + "|"; };
            atOpening = ask;
            readings = {ask, ask};
            method->Tick(1, true);
            EXPECT_EQ(asked, Joined(first + ending, first + ending, second + ending, ""));
        }
}

}  // namespace
}  // namespace kelvo::test
