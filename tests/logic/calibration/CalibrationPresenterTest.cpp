#include "calibration/CalibrationPresenter.h"

#include "calibration/CalibrationFakes.h"
#include "calibration/SampleUncertainty.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

struct Bench : CalibrationBench {
    Bench() {
        state.LinearFit = 1;
        state.TableOpen = 1;
        state.TableFile = "RUN.TAB";
        state.DataPath = folder.Path();
        state.CaliTemp = state.PointTemp = "25";
    }
    /// Points just entered, of which nothing is saved.
    void Enter() {
        state.CaliDirty = 1;
        EXPECT_TRUE(presenter.Activate());
    }
    void Save(const std::optional<std::string>& name) {
        files.Expect(name);
        presenter.SaveCalibration();
    }
    void Open(const std::string& name) {
        files.Expect(name);
        presenter.OpenCalibration();
    }
    ScratchFolder folder;
    CalibrationPresenter presenter{context, view};
};

TEST(CalibrationPresenter, EveryWayPastMeasuredRowsAsksOrKeepsThem) {
    using Step = void (CalibrationPresenter::*)();
    // A reading dialog (18) stands open beside the screen with its link.
    const std::tuple<const char*, Step, std::string> rows[] = {
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
    for (const auto& [name, step, done] : rows) {
        Bench b;
        b.screens.loaded = ScreenCode::frmPtset;
        b.state.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmPtset);
        b.link.open = true;
        if (step == &CalibrationPresenter::Exit) {
            b.prompts.ExpectAsk("Are you sure you want to exit?", false);
            b.presenter.Exit();
            EXPECT_TRUE(b.log.Take().empty() && b.prompts.lastDefaultNo);
            b.prompts.ExpectAsk("Are you sure you want to exit?", true);
        }
        if (step == &CalibrationPresenter::OpenCalibration) b.files.Expect(std::nullopt);
        (b.presenter.*step)();
        EXPECT_EQ(b.log.Take(), done) << name;
        EXPECT_EQ(b.state.ReturnScreen, done.find("stop") != std::string::npos ? 0 : 18) << name;
    }
}

TEST(CalibrationPresenter, TheLineOverAnotherCurveKeepsItsRowsOrStopsAtTheQuestion) {
    // what the table answers, its rows, what is done, the file they are kept in
    const std::tuple<const char*, SaveOutcome, std::size_t, const char*, std::string> rows[] = {
        {"written", SaveOutcome::Saved, 1, "keep,unload", "KEPT2.TAB"},
        {"the folder takes no file", SaveOutcome::Failed, 1, "keep,ask,unload", ""},
        {"nothing measured yet", SaveOutcome::Saved, 0, "unload", ""},
    };
    for (const auto& [name, outcome, count, done, file] : rows) {
        Bench b;
        b.folder.Put("KEPT.TAB", "of another day");
        b.state.LinearFit = 0;
        b.state.PartlyLinearFit = 1;
        b.state.TableFile = "-999";
        b.table.outcome = outcome;
        b.table.rows.assign(count, "row");
        b.presenter.Linear();
        const std::string kept =
            file.empty() ? "" : "The samples of the other curve have been kept in " + (b.folder / file) + ".";
        EXPECT_EQ(Joined(b.log.Take(), b.state.TableOpen, b.state.TableFile, b.state.LinearFit, b.view.status),
                  Joined(done, "0||1", kept))
            << name;
    }
}

TEST(CalibrationPresenter, AnEarlierSlopeIsNamedAndNotRemembered) {
    Bench b;
    b.Enter();
    b.Save(b.folder / "f");
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope, b.state.IonCali[Fluoride][0]), "|-58|-58.000004");
    const char* const noLine = "'E =Eo + S*LogC' function cannot be used with some of the X values";
    const char* const old = "These points have no straight line: slope and results are of an earlier calibration.";
    constexpr std::int16_t Calcium = 3;
    b.state.IonIndex = Calcium;
    SetPoints(b.state, {{-2, 10, 100}, {-2, 20, 100}, {-2, 30, 100}});
    b.prompts.ExpectMessage(noLine);
    b.Enter();
    EXPECT_EQ(Joined(b.presenter.SlopeBox(), b.view.lasting), std::string("-58.00|") + old);
    b.Save(b.folder / "ca");
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope, b.state.IonCali[Calcium][0]), std::string(old) + "|0|");
    b.prompts.ExpectMessage(noLine);
    b.Open(b.folder / "ca.ise");
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope), std::string(old) + "|0") << "opened again";
    b.state.FileTemp = "35";
    b.state.IonIndex = NoIon;
    b.Open(b.folder / "f.ise");
    EXPECT_EQ(Joined(b.view.lasting, b.state.LastSlope), "|-58");
    b.state.CaliTemp = "35";
    b.presenter.PartlyLinear();
    EXPECT_EQ(b.view.lasting, "This calibration was made at 25 °C; the boxes show the working temperature, 35 °C.");
}

TEST(CalibrationPresenter, ACancelledSaveSaysWhatStands) {
    Bench b;
    b.Enter();
    b.Save(std::nullopt);
    EXPECT_NE(b.view.status.find("has not been saved."), std::string::npos) << b.view.status;
    b.Save("a");
    EXPECT_EQ(b.view.status, "");
    b.Save(std::nullopt);
    EXPECT_NE(b.view.status.find("its file stands as it was"), std::string::npos) << b.view.status;
}

TEST(CalibrationPresenter, ACalibrationForRecordingIsOfferedToIt) {
    for (const bool record : {true, false}) {
        Bench b;
        b.state.ReturnScreen = static_cast<std::int16_t>(ScreenCode::frmPHSe);
        b.Enter();
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
    const int before = b.view.shown;
    b.presenter.HideMessage();
    EXPECT_EQ(shown(), "1|0||1|1|0|0");
    EXPECT_EQ(b.view.shown, before + 1);
    b.presenter.MvScale(0);  // from 0 mV up
    EXPECT_EQ(b.view.lasting, "1 of 4 standards lies outside the scale and is not drawn.");
    b.presenter.LogCScale(2);  // up to −3
    EXPECT_TRUE(b.view.lasting.starts_with("2 of 4 standards lie outside")) << b.view.lasting;
    b.log.Take();
    b.state.ASD = 0;
    b.presenter.EditStability();
    EXPECT_EQ(b.log.Take(), "");
    b.state.ASD = 1;
    b.presenter.EditStability();
    EXPECT_EQ(b.log.Take(), "modal 102");
}

TEST(CalibrationPresenter, ASampleTakesOneRoadTypedOrRead) {
    for (const bool onLine : {false, true}) {
        for (const bool segments : {false, true}) {
            Bench b;
            b.Enter();
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

TEST(CalibrationPresenter, WhatIsKnownOfASampleGoesWithItsRow) {
    Bench b;
    SetPoints(b.state, {{-5, 162.3f}, {-4, 103.7f}, {-3, 45.7f}, {-2, -11.7f}});
    b.Enter();
    b.Save(b.folder / "f");
    b.presenter.StartPotentiometry(false);
    SampleForm& samples = b.presenter.Samples();
    samples.Edited(SampleForm::Potential, "30");
    samples.Enter(SampleForm::Potential);
    const std::string interval = "35.9 ppm, 32.9 to 39.0 (95 %)";
    EXPECT_EQ(samples.IntervalLine(), interval);
    samples.Edited(SampleForm::Celsius, "22");
    b.presenter.QuickSave();
    b.presenter.PartlyLinear();
    samples.Edited(SampleForm::Celsius, "25");
    b.presenter.QuickSave();
    samples.Edited(SampleForm::Potential, "31");
    b.presenter.QuickSave();
    const std::string told[] = {interval, interval + "; more than 2 °C from the calibration",
                                interval + "; more than 2 °C from the calibration",
                                "mV was changed after the concentration had been worked out"};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(IntervalText(b.table.facts.at(i)), told[i]) << "boxes of another curve stay as they were told: " << i;
    EXPECT_EQ(b.table.facts.at(0).Get(fact::Basis), samples.IntervalBasis());
}

TEST(CalibrationPresenter, AnUnknownSampleTemperatureIsTheCalibrationsAndSaysSo) {
    for (const bool onLine : {false, true}) {
        Bench b;
        b.Enter();
        b.Save(b.folder / "f");
        b.state.CaliTemp.clear();
        b.presenter.StartPotentiometry(onLine);
        SampleForm& samples = b.presenter.Samples();
        if (onLine) samples.ShowTemperature("");
        EXPECT_EQ(Joined(samples.Text(SampleForm::Celsius), samples.Text(SampleForm::CaliCelsius), b.view.status),
                  "25|25|The sample is assumed to have the calibration's 25 °C; type its own over it.");
        const auto row = [&] {
            samples.TakeRead("50");
            samples.AddRow();
            const std::string remark = b.table.facts.back().Get(fact::Remark);
            const std::string text = b.table.rows.back();
            return text.substr(text.find("E-") + 4) + "|" +
                   (remark.find("°C assumed") == std::string::npos ? "" : "assumed");
        };
        const std::string ph = onLine ? "" : "7.5";
        EXPECT_EQ(row(), "25\t77.0\t" + ph + "|assumed");
        samples.Enter(SampleForm::Celsius);
        EXPECT_EQ(row(), "25\t77.0\t" + ph + "|") << "taken as it stands";
        samples.Edited(SampleForm::Celsius, "");
        EXPECT_EQ(row(), "\tN/A\t" + ph + "|") << "nothing is 32 °F";
    }
}

TEST(CalibrationPresenter, ARefusedSampleLeavesNothing) {
    Bench b;
    b.Enter();
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
