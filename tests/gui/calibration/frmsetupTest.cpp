#include "calibration/CaliSession.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

/// The dialogs of an entry of points: setup, point, and the slope behind a single point.
class EntryDialogs : public ScreenFixture {
 protected:
    Screen* Opened() {
        state.Channel[1] = 1;
        state.IonIndex = 10;
        screens.Show(ScreenCode::frmsetup);
        return Shown(ScreenCode::frmsetup);
    }
    Screen* Point(int number) {
        state.IonIndex = 10;
        state.ReadingActive = true;
        CaliSession(state, prompts).StartPoints(3);
        screens.Close(ScreenCode::fmpaidat);
        state.CurrentPoint = static_cast<std::int16_t>(number);
        screens.Show(ScreenCode::fmpaidat);
        return Shown(ScreenCode::fmpaidat);
    }
    /// One point (-54 mV, 1000 ppm, 25 °C) up to the slope dialog.
    void Calibrate(std::function<void(Screen*)> slope) {
        state.CaliTemp = "20";
        Screen* setup = Opened();
        Box(setup, "txtspin")->SetText(std::string("1"));
        OnModal([](Screen* point) {
            for (const char* text : {"-54", "1000", "25", ""})
                Put(point, text);
        });
        OnModal(slope);
        Click(setup, "cmdspok");
    }
};

TEST_F(EntryDialogs, EnterWalksToOkAndTheArrowsAloneReachOnePoint) {
    Screen* setup = Opened();
    for (const char* stop : {"cmbspE", "CmbspC", "cmbspion", "txtspin", "chkdat(0)"}) {
        EXPECT_EQ(Focus(setup), stop);
        Enter(setup);
    }
    EXPECT_EQ(Focus(setup), "cmdspok");
    Box(setup, "txtspin")->SetText(std::string("11"));
    prompts.ExpectMessage("Wrong data type, please re-enter an integer (2 to 10)");
    Enter(setup);
    EXPECT_EQ(Focus(setup), "txtspin");
    prompts.ExpectMessage("Wrong data type, please re-enter an integer (2 to 10)");
    Put(setup, "29");
    EXPECT_EQ(Text(setup, "txtspin") + Focus(setup), "2chkdat(0)");
    Click(setup, "Spin2(0)");
    EXPECT_EQ(Text(setup, "txtspin"), "1");
    EXPECT_NE(setup->StatusText().find("One point"), std::string::npos);
}

TEST_F(EntryDialogs, CancellingAPointReturnsWithTheChoices) {
    Screen* setup = Opened();
    Find<QComboBox>(setup, "cmbspE")->setCurrentIndex(3);
    OnModal([](Screen* point) {
        Put(point, "-54");
        Key(point, Qt::Key_Escape);
        point->close();
        EXPECT_TRUE(point->isVisible() && Focus(point) == "cmdcancel") << "neither Escape nor the frame drops points";
        Enter(point);
    });
    Click(setup, "cmdspok");
    EXPECT_EQ(Shown(ScreenCode::frmsetup), setup);
    EXPECT_TRUE(Find<QComboBox>(setup, "cmbspE")->currentIndex() == 3 && state.CaliPoints == 0 && state.CaliDirty == 0);
}

TEST_F(EntryDialogs, FollowsThePointForm) {
    Screen* point = Point(2);
    for (const char* hidden : {"txtbox(4)", "txtbox(5)", "Label8"})
        EXPECT_FALSE(Find<QWidget>(point, hidden)->isVisible()) << hidden;
    prompts.ExpectMessage("Invalid data type, please re-enter!");
    Keys(point, "5a");
    ProcessEvents();
    EXPECT_EQ(Text(point, "txtbox(0)") + Focus(point), "5txtbox(0)");
    Put(point, "4");
    Put(point, "100");
    EXPECT_EQ(Text(point, "txtbox(2)") + Text(point, "txtbox(3)"), "5.26E-03-2.2790");
    EXPECT_EQ(Focus(point), "cmdok");
    Enter(point);
    EXPECT_FALSE(screens.IsShown(ScreenCode::fmpaidat));
    EXPECT_EQ(state.CaliPpm[2], 100);
    Key(Point(1), Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown(ScreenCode::fmpaidat) || state.ReadingActive) << "an empty dialog closes";
}

TEST_F(EntryDialogs, AOnePointCalibrationTakesTheTypedSlope) {
    Calibrate([this](Screen* slope) {
        prompts.ExpectMessage("Incomplete data input, please check.");
        Click(slope, "cmdok");
        prompts.ExpectMessage("Invalid data type, please re-enter the data!");
        Keys(slope, "E");
        Put(slope, "-58");
        Enter(slope);
        EXPECT_EQ(Text(slope, "txtkslp(2)") + Focus(slope), " 68cmdok");
        prompts.ExpectAskToSave("Would you like to save the calibration", true);
        files.Expect(Path("one"));
        Enter(slope);
    });
    Screen* main = Shown(ScreenCode::fmISEcli);
    // From 20 to 25 °C: -58 × 298.15 / 293.15 = -58.98926.
    EXPECT_NEAR(state.CaliSlope, -58.98926, 1e-5) << "a 32-bit float near 59 has steps of 4e-6";
    files.Expect(Path("one.ise"));
    Choose(main, "mnuOpen(0)");
    EXPECT_EQ(Text(main, "txtslope(0)"), "-58.99") << "the slope comes with the file";
}

TEST_F(EntryDialogs, CancelEndsTheEntryAndEscapeDoesNot) {
    Calibrate([](Screen* slope) {
        Key(slope, Qt::Key_Escape);
        EXPECT_TRUE(slope->isVisible() && Focus(slope) == "cmdcencel");
        Enter(slope);
    });
    EXPECT_TRUE(Shown(ScreenCode::frmsetup) && state.CaliPoints == 0);
}

}  // namespace
}  // namespace kelvo::test
