#include "support/Joined.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class MenuScreen : public ScreenFixture {
 protected:
    Screen* Branch(int branch) {
        state.MenuBranch = branch;
        screens.Show(ScreenCode::frmenu);
        return Shown(ScreenCode::frmenu);
    }
};

TEST_F(MenuScreen, EachBranchShowsItsOwnRoutes) {
    const char* const shown[] = {"Kelvo : pH Measurement|pH Measurement|4", "Kelvo : ISE Measurement|ISE Measurement|6",
                                 "Kelvo : Laboratory Utilities|Labkit|3"};
    for (const int branch : {1, 2, 0}) {
        Screen* menu = Branch(branch);
        int buttons = 0;
        for (int i = 0; i < 6; ++i)
            buttons += Find<QPushButton>(menu, QStringLiteral("cmdSub(%1)").arg(i))->isVisible() ? 1 : 0;
        EXPECT_EQ(Joined(FromQt(menu->windowTitle()), FromQt(Find<QLabel>(menu, "labmnu")->text()), buttons),
                  shown[branch]);
    }
}

TEST_F(MenuScreen, ARefusedRouteLeavesTheMenuAndAnOpenOneNotesItsPath) {
    prompts.ExpectMessage("None of the channels are avaliable, please re-configure the hardware setup.");
    Click(Branch(0), "cmdSub(1)");
    Shown(ScreenCode::frmenu);
    state.Channel[3] = 1;
    Click(Branch(0), "cmdSub(1)");
    Shown(ScreenCode::frmPHSe);
    EXPECT_FALSE(screens.IsShown(ScreenCode::frmenu));
    EXPECT_EQ(Joined(state.HelpTopic, state.PhPath[1]), "7|1");
    EXPECT_GT(state.BufferCount[1], 0) << "the last pH calibration comes along";
}

TEST_F(MenuScreen, AnAdditionWithoutASlopeOffersTheCalibrationFirst) {
    const char* const question =
        "No calibration data for the selected ion, click on 'Yes' to do the calibration now, click on 'No' to type in "
        "the electrode slope and temperature";
    state.Channel[1] = 1;
    prompts.ExpectAsk(question, true);
    Click(Branch(1), "cmdSub(3)");
    Screen* setup = Shown(ScreenCode::frmsetup);
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmStanad01));
    Click(setup, "cmdspcel");
    prompts.ExpectAsk(question, false);
    Click(Branch(1), "cmdSub(4)");
    Shown(ScreenCode::frmSampa);
    state.LastSlope = -58;
    Click(Branch(1), "cmdSub(3)");
    Shown(ScreenCode::frmStanad01);
}

}  // namespace
}  // namespace kelvo::test
