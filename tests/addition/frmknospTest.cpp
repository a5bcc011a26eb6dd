#include <algorithm>

#include "support/Stage.h"

namespace kelvo::test {
namespace {

const char* const Title = "KNOWN ELECTRODE SLOPE";

class KnownSlopeDialog : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.IonIndex = 10;
        state.Channel[1] = 1;
        state.CaliTemp = "20";
    }
    /// A setup for one point of −54 mV, 1000 ppm, 25 °C.
    Screen* OnePoint() {
        desk.Show(ScreenCode::frmsetup);
        Screen* setup = Shown(ScreenCode::frmsetup);
        for (int i = 0; i < 5; ++i)
            Click(setup, "Spin2(0)");
        OnModal([](Screen* point) {
            Put(point, "-54");
            Put(point, "1000");
            Put(point, "25");
            Enter(point);
        });
        return setup;
    }
    Screen* Opened() {
        desk.Close(ScreenCode::frmknosp);
        desk.Show(ScreenCode::frmknosp);
        return Shown(ScreenCode::frmknosp);
    }
};

TEST_F(KnownSlopeDialog, AOnePointCalibrationDrawsItsLine) {
    Screen* setup = OnePoint();
    OnModal([](Screen* slope) {
        EXPECT_EQ(S(slope->windowTitle()), " Known  Electrode  Slope");
        EXPECT_EQ(Text(slope, "txtkslp(1)"), "20.0");
        EXPECT_EQ(Text(slope, "txtkslp(2)"), "68.0");
        Put(slope, "-58");
        EXPECT_EQ(Focus(slope), "txtkslp(1)");
        Enter(slope);
        EXPECT_EQ(Text(slope, "txtkslp(2)"), " 68");
        EXPECT_EQ(Focus(slope), "cmdok");
        Enter(slope);
    });
    prompts.ExpectAsk("Would you like to save the calibration", true);
    files.Expect(Path("one"));
    Click(setup, "cmdspok");
    Screen* main = Shown(ScreenCode::fmISEcli);
    // From 20 to 25 °C: -58 × 298.15 / 293.15 = -58.98926.
    EXPECT_NEAR(state.CaliSlope, -58.98926, 1e-5) << "a 32-bit float near 59 has steps of 4e-6";
    EXPECT_EQ(Text(main, "txtslope(0)"), "-58.99");
    const auto magenta =
        std::count_if(state.Graph.Items().begin(), state.Graph.Items().end(), [](const Primitive& item) {
            return item.kind == Primitive::Kind::Line && item.colour == colour::LightMagenta;
        });
    EXPECT_EQ(magenta, 1);
    EXPECT_TRUE(Find<QAction>(main, "mnuLinear")->isVisible());
    EXPECT_TRUE(Find<QAction>(main, "mnuRefresh")->isVisible());

    files.Expect(Path("one.ise"));
    Choose(main, "mnuOpen(0)");
    EXPECT_EQ(state.CaliPoints, 1);
    EXPECT_EQ(Text(main, "txtslope(0)"), "-58.99") << "the slope comes with the file";
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
    Choose(main, "mnuPotentiometry(0)");
    Put(main, "-54");
    EXPECT_EQ(Text(main, "txtT(1)"), "-1.28");
    Choose(main, "mnuLinear");
    prompts.ExpectAsk("Would you like to save the data table?", false);
    Choose(main, "mnuNonLinear");
    EXPECT_EQ(Find<QListWidget>(main, "lstCli")->count(), 6) << "one point has no segments and keeps its list";
}

TEST_F(KnownSlopeDialog, CancelEndsTheEntryAndEscapeDoesNot) {
    Screen* setup = OnePoint();
    OnModal([](Screen* slope) {
        Key(slope, Qt::Key_Escape);
        EXPECT_TRUE(slope->isVisible());
        EXPECT_EQ(Focus(slope), "cmdcencel");
        Enter(slope);
    });
    Click(setup, "cmdspok");
    Shown(ScreenCode::frmsetup);
    EXPECT_EQ(state.CaliPoints, 0);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::fmISEcli));
}

TEST_F(KnownSlopeDialog, ASlopeOfZeroOrNoneEndsNothing) {
    Screen* setup = OnePoint();
    OnModal([](Screen* slope) {
        Put(slope, "-");
        EXPECT_NE(slope->RemarkText().find("slope of 0"), std::string::npos);
        Enter(slope);
        Enter(slope);
    });
    prompts.ExpectAsk("Would you like to save the calibration", false);
    Click(setup, "cmdspok");
    EXPECT_TRUE(Shown(ScreenCode::fmISEcli)->isVisible());
}

TEST_F(KnownSlopeDialog, TemperaturesAndTheirLimits) {
    struct Row {
        const char *box, *typed;
        bool taken;
        const char *other, *shown, *focus;
    };
    const std::vector<Row> rows = {
        {"txtkslp(1)", "99.9", true, "txtkslp(2)", " 211.82", "cmdok"},
        {"txtkslp(1)", "100", false, "txtkslp(2)", "68.0", "txtkslp(1)"},
        {"txtkslp(1)", "-0.1", false, "txtkslp(2)", "68.0", "txtkslp(1)"},
        {"txtkslp(1)", "", true, "txtkslp(2)", "68.0", "txtkslp(2)"},
        {"txtkslp(2)", "212", true, "txtkslp(1)", " 100", "cmdok"},
        {"txtkslp(2)", "32", true, "txtkslp(1)", " 0", "cmdok"},
        {"txtkslp(2)", "31.9", false, "txtkslp(1)", "20.0", "txtkslp(2)"},
    };
    for (const Row& row : rows) {
        Screen* slope = Opened();
        Box(slope, row.box)->setFocus(Qt::TabFocusReason);
        if (row.typed[0] == '\0') Key(slope, Qt::Key_Delete);
        if (!row.taken) prompts.ExpectMessage("Data out of range, please re-enter");
        Put(slope, row.typed);
        if (!row.taken) {
            EXPECT_EQ(prompts.lastTitle, Title);
        }
        EXPECT_EQ(Text(slope, row.other), row.shown) << row.box << row.typed;
        EXPECT_EQ(Text(slope, row.box), row.typed);
        EXPECT_EQ(Focus(slope), row.focus) << row.box << row.typed;
    }
}

TEST_F(KnownSlopeDialog, RefusedKeysAndEmptyBoxes) {
    Screen* slope = Opened();
    for (const char* key : {"E", "a", "+", "/", ":"}) {
        prompts.ExpectMessage("Invalid data type, please re-enter the data!");
        Keys(slope, key);
        Settle();
        EXPECT_EQ(prompts.lastTitle, Title) << key;
        EXPECT_TRUE(Text(slope, "txtkslp(0)").empty()) << key;
        EXPECT_EQ(Focus(slope), "txtkslp(0)") << key;
    }
    prompts.ExpectMessage("Incomplete data input, please check.");
    Click(slope, "cmdok");
    EXPECT_EQ(Focus(slope), "txtkslp(0)");
    EXPECT_TRUE(slope->isVisible());
    for (const char* damaged : {"", "abc", "1E40", "-300"}) {
        state.CaliTemp = damaged;
        EXPECT_TRUE(Opened()->isVisible()) << damaged;
    }
}

}  // namespace
}  // namespace kelvo::test
