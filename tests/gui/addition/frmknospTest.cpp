#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

/// The slope dialog, which comes up behind the one point (-54 mV, 1000 ppm, 25 °C) of a calibration.
class KnownSlopeDialog : public ScreenFixture {
 protected:
    void Calibrate(std::function<void(Screen*)> slope) {
        state.IonIndex = 10;
        state.Channel[1] = 1;
        state.CaliTemp = "20";
        screens.Show(ScreenCode::frmsetup);
        Screen* setup = Shown(ScreenCode::frmsetup);
        Box(setup, "txtspin")->SetText(std::string("1"));
        OnModal([](Screen* point) {
            for (const char* text : {"-54", "1000", "25", ""})
                Put(point, text);
        });
        OnModal(slope);
        Click(setup, "cmdspok");
    }
};

TEST_F(KnownSlopeDialog, AOnePointCalibrationTakesTheTypedSlope) {
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

TEST_F(KnownSlopeDialog, CancelEndsTheEntryAndEscapeDoesNot) {
    Calibrate([](Screen* slope) {
        Key(slope, Qt::Key_Escape);
        EXPECT_TRUE(slope->isVisible() && Focus(slope) == "cmdcencel");
        Enter(slope);
    });
    EXPECT_TRUE(Shown(ScreenCode::frmsetup) && state.CaliPoints == 0);
}

}  // namespace
}  // namespace kelvo::test
