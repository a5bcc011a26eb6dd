#include "support/Stage.h"

namespace kelvo::test {
namespace {

class Stub : public Screen {
 public:
    Stub(House& house, ScreenCode code) : Screen(house, code, "frmStub", Kind::Dialog) {}
};

/// The sub-menu with a stand-in behind every route whose screen is still to come.
class MenuScreen : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        for (const ScreenCode code :
             {ScreenCode::frminfo, ScreenCode::frmPHSe, ScreenCode::frmDsply, ScreenCode::frmStanad01,
              ScreenCode::frmSampa, ScreenCode::frmcnvs, ScreenCode::frmselity, ScreenCode::frmacft})
            desk.Register(code, [this, code] { return new Stub(house, code); });
    }
    Screen* Branch(int branch) {
        state.MenuBranch = branch;
        desk.Show(ScreenCode::frmenu);
        return Shown(ScreenCode::frmenu);
    }
};

TEST_F(MenuScreen, RowsOfEachBranch) {
    struct Row {
        const char* caption;
        const char* heading;
        std::vector<const char*> buttons;
    };
    const std::vector<Row> rows = {
        {"Kelvo : pH Measurement",
         "pH Measurement",
         {"Introduction", "Calibration", "Measurement", "pH Continuous Recording"}},
        {"Kelvo : ISE Measurement",
         "ISE Measurement",
         {"Introduction", "Calibration", "Potentiometry", "Standard Addition", "Sample Addition",
          "ISE Continuous Recording"}},
        {"Kelvo : Laboratory Utilities",
         "Labkit",
         {"Conversion / Dilution", "ISE Selectivity", "Activity Coefficients"}},
    };
    for (const int branch : {1, 2, 0}) {
        const Row& row = rows[static_cast<std::size_t>(branch)];
        Screen* menu = Branch(branch);
        EXPECT_EQ(S(menu->windowTitle()), row.caption);
        EXPECT_EQ(S(Find<QLabel>(menu, "labmnu")->text()), row.heading);
        for (int i = 0; i < 6; ++i) {
            const bool used = i < static_cast<int>(row.buttons.size());
            auto* button = Find<QPushButton>(menu, QStringLiteral("cmdSub(%1)").arg(i));
            EXPECT_EQ(button->isVisible(), used) << row.heading << i;
            EXPECT_EQ(Find<QLabel>(menu, QStringLiteral("LABTITAL(%1)").arg(i))->isVisible(), used);
            if (used) {
                EXPECT_EQ(S(button->text()), row.buttons[static_cast<std::size_t>(i)]);
            }
        }
    }
}

TEST_F(MenuScreen, RoutesWithoutTheirChannelAreRefusedAndTheMenuStays) {
    const char* const noIse = "The ISE channel is not avaliable, please re-configure the hardware setup.";
    const char* const noChannel = "The channel is not avaliable, please re-configure the hardware setup.";
    const char* const noPh = "None of the channels are avaliable, please re-configure the hardware setup.";
    struct Row {
        int branch;
        const char* button;
        const char* refusal;  ///< null: opens
        ScreenCode opens;
    };
    const std::vector<Row> rows = {
        {0, "cmdSub(1)", noPh, {}},
        {0, "cmdSub(2)", noPh, {}},
        {1, "cmdSub(1)", noIse, {}},
        {1, "cmdSub(2)", noIse, {}},
        {1, "cmdSub(3)", noChannel, {}},
        {1, "cmdSub(4)", noChannel, {}},
        {0, "cmdSub(0)", nullptr, ScreenCode::frminfo},
        {2, "cmdSub(0)", nullptr, ScreenCode::frmcnvs},
        {2, "cmdSub(1)", nullptr, ScreenCode::frmselity},
        {2, "cmdSub(2)", nullptr, ScreenCode::frmacft},
    };
    for (const Row& row : rows) {
        Screen* menu = Branch(row.branch);
        if (row.refusal != nullptr) prompts.ExpectMessage(row.refusal);
        Click(menu, row.button);
        EXPECT_EQ(menu->isVisible(), row.refusal != nullptr) << row.branch << row.button;
        if (row.refusal != nullptr) continue;
        EXPECT_TRUE(prompts.lastTitle.empty());
        Shown(row.opens);
        desk.Close(row.opens);
    }
    // Channel 2 alone is enough for pH, and channel 1 is not when it holds an ISE.
    state.Channel[3] = 1;
    Click(Branch(0), "cmdSub(2)");
    Shown(ScreenCode::frmDsply);
    EXPECT_EQ(state.HelpTopic, 7);
    EXPECT_EQ(state.PhPath[2], 1);
}

TEST_F(MenuScreen, AnAdditionWithoutASlopeOffersTheCalibrationFirst) {
    const char* const question =
        "No calibration data for the selected ion, click on 'Yes' to do the calibration now, click on 'No' to type in "
        "the electrode slope and temperature";
    state.Channel[1] = 1;
    prompts.ExpectAsk(question, true);
    Click(Branch(1), "cmdSub(3)");
    Screen* setup = Shown(ScreenCode::frmsetup);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmStanad01));
    Click(setup, "cmdspcel");
    prompts.ExpectAsk(question, false);
    Click(Branch(1), "cmdSub(4)");
    Shown(ScreenCode::frmSampa);
    EXPECT_EQ(state.HelpTopic, 3);
    state.LastSlope = -58;
    Click(Branch(1), "cmdSub(3)");
    Shown(ScreenCode::frmStanad01);
    EXPECT_EQ(state.HelpTopic, 2);
}

TEST_F(MenuScreen, WaysOutAndAbout) {
    Screen* menu = Branch(1);
    OnModal([this](Screen* about) {
        EXPECT_EQ(S(Find<QPushButton>(about, "cmdOK")->text()), "Ok");
        Key(about, Qt::Key_Escape);
    });
    Choose(menu, "mnuHelp(0)");
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmtxt)) << "the about box only closes";
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    menu->close();
    Choose(menu, "mnuFile(1)");
    Shown(ScreenCode::frmtxt);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmenu));
}

TEST_F(MenuScreen, PotentiometryBringsTheLastPhCalibrationAlong) {
    state.Channel[1] = 1;
    Click(Branch(1), "cmdSub(2)");
    Shown(ScreenCode::fmISEcli);
    EXPECT_GT(state.BufferCount[1], 0);
    EXPECT_EQ(state.HelpTopic, 1);
}

}  // namespace
}  // namespace kelvo::test
