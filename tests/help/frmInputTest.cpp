#include "support/Stage.h"

namespace kelvo::test {
namespace {

using CustomIonDialog = Stage;

TEST_F(CustomIonDialog, ChecksInOrder) {
    struct Row {
        const char *name, *weight;
        const char* message;  ///< null: taken
        const char* focus;
        float taken;
    };
    const std::vector<Row> rows = {
        {"", "", "You need to type in the ion name and its molecular weight", "txtInput(0)", 0},
        {"", "14", "You need to type in the ion name", "txtInput(0)", 0},
        {"N", "", "You need to type in the ion's molecular weight", "txtInput(1)", 0},
        {"N", "abc", "You need to type in the ion's molecular weight", "txtInput(1)", 0},
        {"N", "1E39", "You need to type in the ion's molecular weight", "txtInput(1)", 0},
        {"N", "-5", nullptr, "", -5},
        {"N", "14.007 g/mol", nullptr, "", 14.007f},
    };
    for (const Row& row : rows) {
        state.CustomIon = "before";
        desk.Show(ScreenCode::frmInput);
        Screen* dialog = Shown(ScreenCode::frmInput);
        Box(dialog, "txtInput(0)")->SetText(std::string(row.name));
        Box(dialog, "txtInput(1)")->SetText(std::string(row.weight));
        if (row.message != nullptr) prompts.ExpectMessage(row.message);
        Click(dialog, "cmdInput(0)");
        EXPECT_EQ(state.CustomIon, row.message != nullptr ? "before" : row.name);
        EXPECT_EQ(desk.IsShown(ScreenCode::frmInput), row.message != nullptr) << row.weight;
        if (row.message == nullptr) {
            EXPECT_EQ(state.CustomWeight, row.taken);
            continue;
        }
        EXPECT_EQ(Text(dialog, "txtInput(1)"), row.weight) << "the text stays";
        EXPECT_EQ(Focus(dialog), row.focus);
    }
}

TEST_F(CustomIonDialog, EnterWalksAndCancelChangesNothing) {
    desk.Show(ScreenCode::frmInput);
    Screen* dialog = Shown(ScreenCode::frmInput);
    EXPECT_EQ(Text(dialog, "txtInput(0)"), "Custom Ion");
    EXPECT_EQ(Text(dialog, "txtInput(1)"), "100");
    Put(dialog, std::string(1000, 'n').c_str());
    EXPECT_EQ(Focus(dialog), "txtInput(1)");
    EXPECT_EQ(Text(dialog, "txtInput(0)").size(), 64u);
    Enter(dialog);
    EXPECT_EQ(Focus(dialog), "cmdInput(0)");
    Key(dialog, Qt::Key_Escape);
    EXPECT_FALSE(desk.IsShown(ScreenCode::frmInput));
    EXPECT_TRUE(state.CustomIon.empty());
    EXPECT_EQ(state.CustomWeight, 0);
}

}  // namespace
}  // namespace kelvo::test
