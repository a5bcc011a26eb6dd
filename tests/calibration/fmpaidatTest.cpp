#include "calibration/CaliSession.h"
#include "support/Stage.h"

namespace kelvo::test {
namespace {

const char* const Invalid = "Invalid data type, please re-enter!";
const char* const Incomplete = "Incomplete data input, please check.";

/// The point dialog in typed mode, fluoride.
class PointDialog : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.IonIndex = 10;
        state.ReadingActive = true;
        CaliSession(state, prompts).StartPoints(3);
    }
    Screen* Point(int number) {
        desk.Close(ScreenCode::fmpaidat);
        state.CurrentPoint = static_cast<std::int16_t>(number);
        desk.Show(ScreenCode::fmpaidat);
        return Shown(ScreenCode::fmpaidat);
    }
    static void At(Screen* point, const char* box) { Box(point, box)->setFocus(Qt::TabFocusReason); }
    static void Paste(Screen* point, const char* box, const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        Box(point, box)->paste();
        Settle();
    }
};

TEST_F(PointDialog, AConcentrationInAnyUnitFillsTheOthers) {
    struct Row {
        const char *box, *typed;
        const char *ppm, *molar, *logC;
    };
    // 18.9984 g/mol: 1E-5 mol/L are 0.19 ppm; LogC -1.5 is 0.0316 mol/L, and 3.16E-02 × 18998.4 is 600.3.
    const std::vector<Row> rows = {{"txtbox(1)", "1000", "1000", "5.26E-02", "-1.2790"},
                                   {"txtbox(2)", "0.00001", ".2", "0.00001", "-5"},
                                   {"txtbox(3)", "-1.5", "600.3", "3.16E-02", "-1.5"}};
    for (const int number : {1, 2}) {
        for (const Row& row : rows) {
            Screen* point = Point(number);
            At(point, row.box);
            Put(point, row.typed);
            EXPECT_EQ(Text(point, "txtbox(1)"), row.ppm) << row.typed;
            EXPECT_EQ(Text(point, "txtbox(2)"), row.molar) << row.typed;
            EXPECT_EQ(Text(point, "txtbox(3)"), row.logC) << row.typed;
            EXPECT_EQ(Focus(point), number == 1 ? "txtbox(4)" : "cmdok");
        }
    }
}

TEST_F(PointDialog, TemperatureIsAskedForOnceAndLasts) {
    state.CaliTemp = "20";
    Screen* point = Point(1);
    EXPECT_EQ(S(point->windowTitle()), "");
    EXPECT_EQ(Text(point, "txtbox(5)"), "68.0");
    EXPECT_TRUE(Find<QLabel>(point, "Label8")->isVisible());
    At(point, "txtbox(5)");
    Put(point, "86");
    EXPECT_EQ(Text(point, "txtbox(4)"), "30.0");
    EXPECT_EQ(Focus(point), "cmdok");
    At(point, "txtbox(0)");
    Put(point, "-54");
    Put(point, "1000");
    Click(point, "cmdok");
    EXPECT_EQ(state.PointTemp, "30.0");
    EXPECT_EQ(state.CaliE[1], -54);
    EXPECT_EQ(state.CaliPpm[1], 1000);
    EXPECT_FLOAT_EQ(state.CaliMolar[1], 0.0526f);
    EXPECT_FLOAT_EQ(state.CaliLogC[1], -1.279f);

    point = Point(2);
    for (const char* hidden : {"txtbox(4)", "txtbox(5)", "Label8", "Label9", "Label10"})
        EXPECT_FALSE(Find<QWidget>(point, hidden)->isVisible()) << hidden;
    Put(point, "4");
    Put(point, "100");
    Enter(point);
    EXPECT_FALSE(desk.IsShown(ScreenCode::fmpaidat));
    EXPECT_EQ(state.PointTemp, "30.0");
}

TEST_F(PointDialog, KeysAndPastedTexts) {
    struct Row {
        const char *box, *text, *left;
        int refused;
    };
    for (const Row& row : std::vector<Row>{{"txtbox(0)", "5a", "", 1},
                                           {"txtbox(0)", "-5.2E1", "-5.2E1", 0},
                                           {"txtbox(1)", "1e3", "", 1},
                                           {"txtbox(1)", "1,5", "", 1},
                                           {"txtbox(2)", "1e-3", "1e-3", 0},
                                           {"txtbox(2)", "1 2", "", 1},
                                           {"txtbox(3)", "−3", "", 1}}) {
        Screen* point = Point(2);
        At(point, row.box);
        for (int i = 0; i < row.refused; ++i)
            prompts.ExpectMessage(Invalid);
        Paste(point, row.box, row.text);
        EXPECT_EQ(Text(point, row.box), row.left) << row.text;
        EXPECT_EQ(Focus(point), row.box);
    }
    Screen* point = Point(2);
    Paste(point, "txtbox(1)", std::string(1000, '9').c_str());
    EXPECT_EQ(Text(point, "txtbox(1)").size(), 32u);
    At(point, "txtbox(1)");
    for (const char* huge : {"9E99999", "9E200"}) {
        prompts.ExpectMessage("Data out of range, please try again.");
        Put(point, huge);
        EXPECT_EQ(Text(point, "txtbox(1)"), huge);
        EXPECT_EQ(Focus(point), "txtbox(1)");
    }
}

TEST_F(PointDialog, OkHelpsToCompleteAndNeverStoresHalfAPoint) {
    Screen* point = Point(2);
    prompts.ExpectMessage(Incomplete);
    Click(point, "cmdok");
    EXPECT_TRUE(prompts.lastTitle.empty());
    EXPECT_EQ(Focus(point), "txtbox(1)");

    for (int i = 0; i < 2; ++i)
        Enter(point);
    prompts.ExpectMessage(Incomplete);
    Enter(point);
    EXPECT_EQ(prompts.lastTitle, "Data Input") << "Enter through three empty boxes";
    EXPECT_EQ(Focus(point), "txtbox(1)");

    Keys(point, "0");
    Click(point, "cmdok");
    EXPECT_TRUE(point->isVisible());
    EXPECT_TRUE(Text(point, "txtbox(2)").empty()) << "0 ppm fills nothing";
    EXPECT_NE(point->RemarkText().find("1 mol/L"), std::string::npos);

    At(point, "txtbox(1)");
    Box(point, "txtbox(1)")->selectAll();
    Keys(point, "100");
    Click(point, "cmdok");
    EXPECT_EQ(Text(point, "txtbox(3)"), "-2.2790") << "OK enters the concentration";
    EXPECT_EQ(Focus(point), "txtbox(0)") << "and leads to what is missing";
    EXPECT_NE(point->RemarkText().find("potential"), std::string::npos);
    EXPECT_EQ(state.CaliPpm[2], 0);
    Put(point, "4");
    Click(point, "cmdok");
    EXPECT_EQ(state.CaliE[2], 4);
}

TEST_F(PointDialog, ConcentrationsThatDoNotBelongTogetherAreTold) {
    Screen* point = Point(2);
    Put(point, "4");
    Put(point, "100");
    EXPECT_TRUE(point->RemarkText().empty());
    At(point, "txtbox(1)");
    Keys(point, "10");
    EXPECT_NE(point->RemarkText().find("no longer belong together"), std::string::npos);
    Enter(point);
    EXPECT_TRUE(point->RemarkText().empty());
    EXPECT_EQ(Text(point, "txtbox(3)"), "-3.2790");

    // LogC -5 is .2 ppm to the mask; worked out again from there it is -4.9788.
    point = Point(3);
    At(point, "txtbox(3)");
    Put(point, "-5");
    Click(point, "cmdok");
    EXPECT_NE(Text(point, "txtbox(3)"), "-5");
    EXPECT_NE(point->RemarkText().find("worked out mol/L and LogC again"), std::string::npos);
}

TEST_F(PointDialog, AnEmptyDialogCloses) {
    Screen* point = Point(1);
    Key(point, Qt::Key_Escape);
    EXPECT_FALSE(desk.IsShown(ScreenCode::fmpaidat));
    EXPECT_FALSE(state.ReadingActive);
}

}  // namespace
}  // namespace kelvo::test
