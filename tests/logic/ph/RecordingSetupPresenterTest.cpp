#include "ph/RecordingSetupPresenter.h"

#include <gtest/gtest.h>

#include "app/AppState.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using Next = RecordingSetupPresenter::Next;

class RecordingSetupPresenterTest : public testing::Test {
 protected:
    RecordingSetupPresenterTest() {
        state.DataPath = state.AppPath = folder.Path();
        state.IniPath = folder / "KELVO.ini";
        state.HelpTopic = 7;
    }
    void OpenPh(std::size_t path, std::array<std::int16_t, 5> channel) {
        state.pHMode = -1;
        state.PhPath = {};
        state.PhPath[path] = 1;
        state.Channel = channel;
        EXPECT_EQ(setup.Load(), Next::Stay);
    }
    void CalibrateIse() {
        state.CaliPoints = 2;
        state.CaliE = {0, 60, 0};
        state.CaliLogC = {0, -4, -3};
        state.CaliPpm = {0, 10, 100};
        state.CaliMolar = {0, 1e-4f, 1e-3f};
        state.IonIndex = 10;
        state.FileTemp = "25";
        state.FileDate = "24/11/2026 08:30";
    }
    /// "CmbTime cmbX cmbY|electrode 1 ATC 1 electrode 2 ATC 2".
    std::string Choices() const {
        return Joined(state.CmbTime, state.cmbX, state.cmbY, state.chk1[0], state.chk1[1], state.chk2[0],
                      state.chk2[1]);
    }

    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    RecordingSetupPresenter setup{state, prompts, files, nullptr};
};

TEST_F(RecordingSetupPresenterTest, PhRecordingFromChoiceToStart) {
    OpenPh(3, {1, 0, 1, 0, 0});
    EXPECT_EQ(setup.caption, "pH Continuous Recording Setup");
    EXPECT_TRUE(setup.optionsShown && setup.opt == 0 && !setup.menusEnabled && !setup.listsFilled);
    EXPECT_EQ(Choices(), "-1|-1|-1|0|0|0|0");
    EXPECT_EQ(setup.Ok(), Next::Stay);
    EXPECT_TRUE(!setup.optionsShown && setup.menusEnabled && setup.listsFilled && setup.channelsShown);
    EXPECT_EQ(Choices(), "0|0|4|1|0|0|0");
    setup.SelectInterval(5);
    EXPECT_STREQ(setup.Periods()[2], "       3 Hours");
    EXPECT_EQ(state.cmbX, -1) << "a change of the interval needs a new choice";
    setup.SelectPeriod(3);
    setup.SelectRange(1);
    for (const int electrode : {0, 1})
        for (const int index : {0, 1})
            setup.Tick(electrode, index, true);
    EXPECT_EQ(Choices(), "5|3|1|1|1|0|0") << "nothing stays ticked on a channel that is off";
    state.ViewOnly = 7;
    EXPECT_EQ(setup.Ok(), Next::Record);
    EXPECT_EQ(Joined(state.ViewOnly, state.PhPath), "7|0,0,0,0,0") << "set by the choice";
}

TEST_F(RecordingSetupPresenterTest, AFileIsLookedAtWithoutRecording) {
    OpenPh(3, {0, 0, 0, 0, 0});
    setup.opt = -1;
    prompts.ExpectMessage("Please select one of the options, or click Cancel to go back to the main menu");
    EXPECT_EQ(setup.Ok(), Next::Stay);
    setup.opt = 0;
    prompts.ExpectMessage("None of the pH channels are avaliable, please re-configure the hardware setup.");
    EXPECT_EQ(setup.Ok(), Next::Hardware);
    setup.opt = 1;
    EXPECT_EQ(setup.Ok(), Next::Record);
    EXPECT_EQ(Joined(state.ViewOnly, state.HideTableOnBack), "1|0");
    state.pHMode = 0;
    setup.Load();
    setup.opt = 1;
    EXPECT_EQ(setup.Ok(), Next::Record);
    EXPECT_EQ(Joined(state.ViewOnly, state.HideTableOnBack), "1|-1");
}

TEST_F(RecordingSetupPresenterTest, IseRecordingGoesByItsCalibration) {
    CalibrateIse();
    setup.Load();
    EXPECT_EQ(setup.caption, "ISE Continuous Recording Setup");
    prompts.ExpectMessage("Ion channel is not avaliable, please re-configure in the Hardware Setup.");
    EXPECT_EQ(setup.Ok(), Next::Hardware);

    state.Channel[1] = 1;
    setup.Load();
    EXPECT_EQ(setup.Ok(), Next::Stay);
    EXPECT_TRUE(setup.frameIseShown && setup.latestOffered && !setup.optionsShown && setup.optise == 0);
    EXPECT_EQ(setup.status, "");
    EXPECT_EQ(setup.Ok(), Next::IseCalibration);
    EXPECT_EQ(Joined(state.CaliDirty, state.ReturnScreen, state.LinearFit), "1|16|1");

    // The calibration screen brings it back.
    EXPECT_EQ(setup.Load(), Next::Stay);
    EXPECT_TRUE(setup.listsFilled && !setup.optionsShown && !setup.frameIseShown && !setup.channelsShown);
    EXPECT_EQ(Joined(setup.rangeLabel, state.CaliDirty, state.ViewOnly, Choices()), " ppm Range|0|0|0|0|3|0|0|0|0");
    EXPECT_EQ(setup.Ok(), Next::Record);
    state.CaliPoints = 1;
    state.CaliDirty = 1;
    setup.Load();
    EXPECT_EQ(setup.status, "The calibration has one point: a recording by it shows no concentration to rely on.");
}

TEST_F(RecordingSetupPresenterTest, WithoutAStoredCalibrationOnlyTheOtherIsOffered) {
    state.Channel[1] = 1;
    const std::function<void()> lacks[] = {[&] { state.CaliPoints = 0; }, [&] { state.FileTemp.clear(); },
                                           [&] { state.FileDate.clear(); }};
    for (const auto& lack : lacks) {
        CalibrateIse();
        lack();
        setup.Load();
        setup.Ok();
        EXPECT_TRUE(!setup.latestOffered && setup.optise == 1) << &lack - lacks;
    }
    EXPECT_EQ(setup.Ok(), Next::IseCalibration);
    EXPECT_EQ(Joined(state.CaliDirty, state.ReturnScreen), "0|16");
    // A mark without points is no calibration to go on with.
    state.CaliDirty = 1;
    state.CaliPoints = 0;
    setup.Load();
    EXPECT_TRUE(setup.optionsShown);
}

TEST_F(RecordingSetupPresenterTest, CalibrationStageCountsBuffers) {
    OpenPh(1, {0, 0, 0, 1, 0});
    EXPECT_TRUE(setup.calibrationShown && !setup.optionsShown && setup.menusEnabled);
    EXPECT_TRUE(!setup.electrodes[0].wanted && setup.electrodes[1].wanted);
    const std::pair<const char*, const char*> rows[] = {{"1", "2"}, {"5", "4"},   {"3", "3"},
                                                        {"", "2"},  {"abc", "2"}, {"44", "4"}};
    for (const auto& [typed, stands] : rows) {
        setup.SetBuffers(1, typed);
        EXPECT_EQ(setup.electrodes[1].txtbf, stands) << typed;
    }
    std::string stepped;
    for (const int by : {-1, -1, -1, 1, 1, 1})
        setup.StepBuffers(1, by), stepped += setup.electrodes[1].txtbf;
    EXPECT_EQ(stepped, "322344");
    prompts.ExpectMessage("You need to re-configure the hardware setup to enable this channel.");
    setup.WantCalibration(0, true);
    EXPECT_FALSE(setup.electrodes[0].wanted);
    EXPECT_EQ(setup.Ok(), Next::Calibrate);
    EXPECT_EQ(Joined(setup.electrodes[0].buffers, setup.electrodes[1].buffers), "0|4");
    setup.WantCalibration(1, false);
    prompts.ExpectMessage("You have not selected an electrode,,\"");
    EXPECT_EQ(setup.Ok(), Next::Stay);
}

TEST_F(RecordingSetupPresenterTest, AFileThatIsNotReadChangesNoCalibration) {
    CalibrateIse();
    const AppState before = state;
    folder.Put("BAD.ISE", "0\r\n2\r\n10\r\n2\r\n-4\r\n");
    files.Expect(std::nullopt);
    setup.ChangeCalibration();
    files.Expect(folder / "BAD.ISE");
    prompts.ExpectMessage("Error62Opening" + folder / "BAD.ISE" + ":Input past end of file.");
    setup.ChangeCalibration();
    EXPECT_EQ(Joined(state.CaliE, state.CaliPoints, state.IonIndex, state.FileDate),
              Joined(before.CaliE, "2|10|24/11/2026 08:30"));
}

}  // namespace
}  // namespace kelvo::test
