#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class HardwareScreen : public ScreenFixture {
 protected:
    /// Opens on the settings as they stand in the file after these are added.
    Screen* Opened(const std::string& settings = "") {
        std::string ini = Content("KELVO.ini");
        ini.insert(ini.find("]\r\n") + 3, settings);
        std::ofstream(folder / "KELVO.ini", std::ios::binary) << ini;
        LoadState(state, {1280 * 15, 800 * 15}, folder.string());
        screens.Show(ScreenCode::frmHware);
        return Shown(ScreenCode::frmHware);
    }
};

TEST_F(HardwareScreen, BackLeadsToWhatIsMissing) {
    Screen* screen = Opened("IonIndex=-1\r\nTemperature1=\r\nTemperature2=\r\n");
    const std::array<const char*, 3> steps[] = {
        {"", "Please select one electrode.", "Chkchl(0)"},
        {"Chkchl(1)", "You need to select the temperature channel or input a default for the electrode 1", "txtC(0)"},
        {"Chkchl(2)", "You need to select an detected ion for the ISE measurement", "cmbIon"}};
    for (const auto& [tick, message, focus] : steps) {
        if (*tick != '\0') Click(screen, tick);
        prompts.ExpectMessage(message);
        Click(screen, "cmdHware(0)");
        EXPECT_EQ(Focus(screen), focus);
    }
    EXPECT_TRUE(Find<QWidget>(screen, "Fram(1)")->isVisible());
    EXPECT_FALSE(Find<QWidget>(screen, "txtC(0)")->isVisible()) << "the sensor is ticked";
}

TEST_F(HardwareScreen, EnterWalksThroughAndChangesNothing) {
    Screen* screen =
        Opened("Channel1=1\r\nChannel3=1\r\nTemperature1=1E40\r\nTemperature2=25\r\nPortSetting=-7\r\n====\r\n");
    std::string passed;
    for (int i = 0; i < 40 && Focus(screen) != "cmdHware(0)"; ++i) {
        passed += Focus(screen) + " ";
        Enter(screen);
    }
    EXPECT_EQ(passed,
              "Chkchl(1) txtNum(1) Chkchl(3) txtNum(2) Chkchl(2) txtC(0) txtC(2) Chkchl(4) txtC(1) txtC(3) txtC(5) "
              "txtC(4) cmbIon txtISAB cmbPort txtOp CmbFormat chkPrt ");
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Key(screen, Qt::Key_Escape);
    EXPECT_TRUE(prompts.lastDefaultNo);
    Find<QWidget>(screen, "cmdHware(0)")->setFocus();
    Enter(screen);
    Shown(ScreenCode::frmtxt);
    EXPECT_EQ(state.IonIndex, 10);
    EXPECT_EQ(state.Temperature[1], "1E40") << "an empty °F says nothing";
}

TEST_F(HardwareScreen, ACustomIonThatIsCalledLikeAListedOneKeepsItsWeight) {
    Screen* screen = Opened("Channel1=1\r\n");
    auto* list = Find<QComboBox>(screen, "cmbIon");
    OnModal([this](Screen* dialog) {
        Put(dialog, "no3");
        Put(dialog, "14.007");
        Enter(dialog);
    });
    list->setCurrentIndex(25);
    emit list->activated(25);
    list->setFocus(Qt::TabFocusReason);
    Key(screen, Qt::Key_Tab);
    Click(screen, "cmdHware(0)");
    LoadState(state, {1280 * 15, 800 * 15}, folder.string());
    EXPECT_EQ(state.Ions.names[25], "no3");
    EXPECT_FLOAT_EQ(state.Ions.weights[25], 14.007f);
}

}  // namespace
}  // namespace kelvo::test
