#include "calibration/CalibrationPresenter.h"

#include "calibration/CalibrationFakes.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

struct Bench : CalibrationBench {
    Bench() {
        state.LinearFit = 1;
        state.CaliDirty = 0;
        state.TableOpen = 1;
        state.TableFile = "RUN.TAB";
        state.CaliTemp = state.PointTemp = "25";
    }
    CalibrationPresenter presenter{context, view};
};

TEST(CalibrationPresenter, EveryWayPastMeasuredRowsAsksOrKeepsThem) {
    using Step = void (CalibrationPresenter::*)();
    struct Row {
        const char* name;
        Step step;
        const char* done;
    };
    // A reading dialog (18) stands open beside the screen with its link.
    const Row rows[] = {
        {"New", &CalibrationPresenter::New, "close 18,stop,ask,unload,show 21,close 1"},
        {"Close and Back", &CalibrationPresenter::Leave, "ask,close 18,stop,show 8,close 1"},
        {"Open, cancelled", &CalibrationPresenter::OpenCalibration, "close 18,stop,ask"},
        {"Exit", &CalibrationPresenter::Exit, "Would you like to save to data table?,end"},
        {"Partly Linear", &CalibrationPresenter::PartlyLinear, "ask"},
        {"Best-fit", &CalibrationPresenter::BestCurve, "ask"},
        {"the line again", &CalibrationPresenter::Linear, ""},
        {"Potentiometry", &CalibrationPresenter::PotentiometryOpened, "close 18,stop"},
        {"Quick Save", &CalibrationPresenter::QuickSave, "close 18,stop,row,keep,modal 13"},
        {"Open, Data Table, cancelled", &CalibrationPresenter::OpenTable, "hide 19"},
        {"Save, Data Table", &CalibrationPresenter::SaveTable, "save"},
    };
    for (const Row& row : rows) {
        Bench b;
        b.screens.loaded = ScreenCode::frmPtset;
        b.state.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmPtset);
        b.link.open = true;
        if (row.step == &CalibrationPresenter::Exit) b.prompts.ExpectAsk("Are you sure you want to exit?", true);
        if (row.step == &CalibrationPresenter::OpenCalibration) b.files.Expect(std::nullopt);
        (b.presenter.*row.step)();
        EXPECT_EQ(b.log.Take(), row.done) << row.name;
        const bool ended = std::string(row.done).find("stop") != std::string::npos;
        EXPECT_EQ(b.state.ReturnScreen, ended ? 0 : 18) << row.name;
    }
}

TEST(CalibrationPresenter, TheLineOverAnotherCurveKeepsItsRowsOrStopsAtTheQuestion) {
    struct Row {
        const char* name;
        SaveOutcome outcome;
        int rows;
        const char* done;
        const char* kept;
    };
    const Row rows[] = {
        {"written", SaveOutcome::Saved, 1, "keep,unload", "KEPT2.TAB"},
        {"the folder takes no file", SaveOutcome::Failed, 1, "keep,ask,unload", ""},
        {"nothing measured yet", SaveOutcome::Saved, 0, "unload", ""},
    };
    for (const Row& row : rows) {
        ScratchFolder folder;
        folder.Put("KEPT.TAB", "of another day");
        Bench b;
        b.state.LinearFit = 0;
        b.state.PartlyLinearFit = 1;
        b.state.TableFile = "-999";
        b.state.DataPath = folder.Path();
        b.table.outcome = row.outcome;
        b.table.rows.assign(static_cast<std::size_t>(row.rows), "row");
        b.presenter.Linear();
        EXPECT_EQ(Joined(b.log.Take(), b.state.TableOpen, b.state.TableFile, b.state.LinearFit),
                  std::string(row.done) + "|0||1")
            << row.name;
        const std::string kept =
            *row.kept == 0 ? "" : "The samples of the other curve have been kept in " + (folder / row.kept) + ".";
        EXPECT_EQ(b.view.status, kept) << row.name;
    }
}

TEST(CalibrationPresenter, AnEarlierSlopeIsNamedAndNotRemembered) {
    ScratchFolder folder;
    Bench b;
    b.state.DataPath = folder.Path();
    b.state.CaliDirty = 1;
    b.presenter.Activate();
    b.files.Expect(folder / "f");
    b.presenter.SaveCalibration();
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope, b.state.IonCali[Fluoride][0]), "|-58|-58.000004");
    const char* const noLine = "'E =Eo + S*LogC' function cannot be used with some of the X values";
    const char* const old = "These points have no straight line: slope and results are of an earlier calibration.";
    constexpr std::int16_t Calcium = 3;
    b.state.IonIndex = Calcium;
    SetPoints(b.state, {{-2, 10, 100}, {-2, 20, 100}, {-2, 30, 100}});
    b.state.CaliDirty = 1;
    b.prompts.ExpectMessage(noLine);
    b.presenter.Activate();
    EXPECT_EQ(Joined(b.presenter.SlopeBox(), b.view.lasting), std::string("-58.00|") + old);
    b.files.Expect(folder / "ca");
    b.presenter.SaveCalibration();
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope, b.state.IonCali[Calcium][0]), std::string(old) + "|0|");
    b.files.Expect(folder / "ca.ise");
    b.prompts.ExpectMessage(noLine);
    b.presenter.OpenCalibration();
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope), std::string(old) + "|0") << "opened again";
    b.state.FileTemp = "35";
    b.state.IonIndex = NoIon;
    b.files.Expect(folder / "f.ise");
    b.presenter.OpenCalibration();
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope), "|-58");
    b.state.CaliTemp = "35";
    b.presenter.PartlyLinear();
    EXPECT_EQ(b.view.lasting, "This calibration was made at 25 °C; the boxes show the working temperature, 35 °C.");
}

TEST(CalibrationPresenter, ACancelledSaveSaysWhatStands) {
    ScratchFolder folder;
    Bench b;
    b.state.DataPath = folder.Path();
    b.state.CaliDirty = 1;
    b.presenter.Activate();
    b.files.Expect(std::nullopt);
    b.presenter.SaveCalibration();
    EXPECT_NE(b.view.status.find("has not been saved."), std::string::npos) << b.view.status;
    b.files.Expect("a");
    b.presenter.SaveCalibration();
    EXPECT_EQ(b.view.status, "");
    b.files.Expect(std::nullopt);
    b.presenter.SaveCalibration();
    EXPECT_NE(b.view.status.find("its file stands as it was"), std::string::npos) << b.view.status;
}

TEST(CalibrationPresenter, ACalibrationForRecordingIsOfferedToIt) {
    for (const bool record : {true, false}) {
        Bench b;
        b.state.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmPHSe);
        b.state.CaliDirty = 1;
        EXPECT_TRUE(b.presenter.Activate());
        b.prompts.ExpectAsk("Would you like to use this calibration and start the Continuous Recording", record);
        EXPECT_TRUE(b.presenter.AskToSave());
        EXPECT_EQ(Joined(b.log.Take(), b.state.ReturnScreen, b.state.CaliDirty, b.state.CaliPoints),
                  record ? "ask,show 16,close 1|0|1|4" : "|0|0|4");
    }
}

TEST(CalibrationPresenter, WhatIsShownFollowsTheCalibration) {
    Bench b;
    const auto shown = [&] {
        const auto& p = b.presenter;
        return Joined(p.HasList(), p.SlopeShown(), p.SlopeBox(), p.RecordingOffered(), p.Measuring(),
                      p.Message().visible, p.Message().opening);
    };
    b.presenter.Load();
    EXPECT_EQ(shown(), "0|0||0|0|1|1") << "empty";
    b.state.CaliDirty = 1;
    b.presenter.Load();
    EXPECT_EQ(shown(), "0|0||0|0|0|1") << "points are being entered";
    EXPECT_TRUE(b.presenter.Activate());
    EXPECT_EQ(shown(), "1|1|-58.00|1|0|0|1");
    b.state.TableFile = "-999";
    b.presenter.StartPotentiometry(false);
    EXPECT_EQ(shown(), "1|1|-58.00|1|1|0|1") << "measuring";
    b.presenter.PartlyLinear();
    b.presenter.ToggleMessage();
    EXPECT_EQ(shown(), "1|0||1|1|1|1");
    b.presenter.PotentiometryOpened();
    b.presenter.HideMessage();
    EXPECT_EQ(shown(), "1|0||1|1|0|0");
}

TEST(CalibrationPresenter, ASampleTakesOneRoadTypedOrRead) {
    for (const bool onLine : {false, true}) {
        for (const bool segments : {false, true}) {
            Bench b;
            b.state.CaliDirty = 1;
            b.presenter.Activate();
            if (segments) b.presenter.PartlyLinear();
            b.log.Take();
            b.presenter.StartPotentiometry(onLine);
            EXPECT_EQ(b.log.Take(), onLine ? "start,close 18,show 18" : "");
            SampleForm& samples = b.presenter.Samples();
            if (onLine) {
                samples.ShowTemperature("24.5");
                samples.ShowPh("N/A");
                EXPECT_TRUE(samples.TakeRead("30.00"));
                samples.AddRow();
            } else {
                samples.Edited(SampleForm::Potential, "30.00");
                samples.Enter(SampleForm::Potential);
            }
            const std::string ppm = samples.Text(SampleForm::Ppm);
            EXPECT_NEAR(Val(ppm), 35.6, 0.0051);
            EXPECT_EQ(ppm.size(), onLine && segments ? 7u : 5u) << "read off a curve it has four places";
            EXPECT_EQ(b.log.Take(), "row,keep");
            EXPECT_EQ(b.table.rows.at(0), onLine ? " 1\t\t09:05\t30.00\t35.60\t1.87E-3\t24.5\t76.1\tN/A"
                                                 : " 1\t\t09:05\t30.00\t35.60\t1.87E-3\t25\t77.0\t7.5");
            EXPECT_EQ(b.state.SampleCount, 1);
        }
    }
}

TEST(CalibrationPresenter, ARefusedSampleLeavesNothing) {
    Bench b;
    b.state.CaliDirty = 1;
    b.presenter.Activate();
    b.presenter.StartPotentiometry(false);
    SampleForm& samples = b.presenter.Samples();
    b.log.Take();
    samples.Enter(SampleForm::Potential);
    b.prompts.ExpectMessage("Input data out of range(±1000 mV), please re-typy again.");
    EXPECT_FALSE(samples.TakeRead("1000.1"));
    b.state.SampleCount = 101;
    b.prompts.ExpectMessage("Data out of range, please try again.");
    EXPECT_FALSE(samples.TakeRead("30"));
    EXPECT_EQ(b.log.Take(), "");
    EXPECT_NE(b.view.status.find("101 samples"), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
