#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

using CustomIonDialog = ScreenFixture;

TEST_F(CustomIonDialog, EnterWalksOkLeadsToWhatIsMissingAndEscapeChangesNothing) {
    screens.Show(ScreenCode::frmInput);
    Screen* dialog = Shown(ScreenCode::frmInput);
    EXPECT_EQ(Text(dialog, "txtInput(0)") + Text(dialog, "txtInput(1)"), "Custom Ion100");
    Put(dialog, std::string(1000, 'n').c_str());
    EXPECT_EQ(Text(dialog, "txtInput(0)").size(), 64u);
    EXPECT_EQ(Focus(dialog), "txtInput(1)");
    prompts.ExpectMessage("You need to type in the ion's molecular weight");
    Put(dialog, "0");
    Enter(dialog);
    EXPECT_EQ(Focus(dialog), "txtInput(1)");
    Key(dialog, Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown(ScreenCode::frmInput));
    EXPECT_TRUE(state.CustomIon.empty());
}

}  // namespace
}  // namespace kelvo::test
