#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class SetupScreen : public ScreenFixture {
 protected:
    Screen* Opened() {
        state.Channel[1] = 1;
        state.IonIndex = 10;
        screens.Show(ScreenCode::frmsetup);
        return Shown(ScreenCode::frmsetup);
    }
};

TEST_F(SetupScreen, EnterWalksToOkAndTheArrowsAloneReachOnePoint) {
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

TEST_F(SetupScreen, CancellingAPointReturnsWithTheChoices) {
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

}  // namespace
}  // namespace kelvo::test
