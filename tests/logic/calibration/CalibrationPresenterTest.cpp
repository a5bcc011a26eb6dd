#include "calibration/CalibrationPresenter.h"

#include "calibration/CalibrationFakes.h"
#include "support/Joined.h"

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

TEST(CalibrationPresenter, TheLineOverAnotherCurveKeepsItsRowsInAFile) {
    Bench b;
    b.state.LinearFit = 0;
    b.state.PartlyLinearFit = 1;
    b.state.TableFile = "-999";
    b.state.DataPath = "/nowhere/";
    b.presenter.Linear();
    EXPECT_EQ(Joined(b.log.Take(), b.state.TableOpen, b.state.TableFile, b.view.status),
              "keep,unload|0||The samples of the other curve have been kept in /nowhere/KEPT.TAB.");
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
