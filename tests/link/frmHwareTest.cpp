#include "support/Stage.h"

namespace kelvo::test {
namespace {

class HardwareScreen : public Stage {
 protected:
    Screen* Opened() {
        desk.Close(ScreenCode::frmHware);
        desk.Show(ScreenCode::frmHware);
        return Shown(ScreenCode::frmHware);
    }
    static void Tick(Screen* screen, int i) { Click(screen, QStringLiteral("Chkchl(%1)").arg(i)); }
    static bool Ticked(Screen* screen, int i) {
        return Find<QCheckBox>(screen, QStringLiteral("Chkchl(%1)").arg(i))->isChecked();
    }
    /// Types into a box and leaves it by Tab.
    static void Fill(Screen* screen, const char* box, const char* text) {
        Box(screen, box)->setFocus(Qt::TabFocusReason);
        Box(screen, box)->selectAll();
        text[0] == '\0' ? Key(screen, Qt::Key_Delete) : Keys(screen, text);
        Key(screen, Qt::Key_Tab);
    }
    void AddSetting(const char* line) {
        std::string ini = Content("KELVO.ini");
        ini.insert(ini.find("]") + 1, std::string("\r\n") + line);
        std::ofstream(folder / "KELVO.ini", std::ios::binary) << ini;
        LoadState(state, {1280 * 15, 800 * 15}, folder.string());
    }
};

TEST_F(HardwareScreen, BackChecksInOrderAndLeadsToWhatIsMissing) {
    struct Row {
        const char* name;
        std::vector<int> ticks;
        const char *celsius1, *celsius2;
        bool ion;
        const char* message;
        const char* focus;
    };
    const char* const no1 = "You need to select the temperature channel or input a default for the electrode 1";
    const char* const no2 = "You need to select the temperature channel or input a default for the electrode 2";
    const std::vector<Row> rows = {
        {"nothing ticked", {}, "25", "25", true, "Please select one electrode.", "Chkchl(0)"},
        {"sensors are no electrodes", {2, 4}, "", "", true, "Please select one electrode.", "Chkchl(0)"},
        {"ISE without temperature", {1}, "", "25", true, no1, "txtC(0)"},
        {"a blank is no temperature", {1}, " ", "25", true, no1, "txtC(0)"},
        {"the temperature comes before the ion", {1}, "", "25", false, no1, "txtC(0)"},
        {"ISE without an ion",
         {1},
         "25",
         "25",
         false,
         "You need to select an detected ion for the ISE measurement",
         "cmbIon"},
        {"channel 2 without temperature", {3}, "", "", true, no2, "txtC(1)"},
        {"sensor 1 does not serve channel 2", {0, 2, 3}, "", "", true, no2, "txtC(1)"},
    };
    for (const Row& row : rows) {
        state.IonIndex = row.ion ? 10 : NoIon;
        state.Temperature = {"", row.celsius1, row.celsius2};
        Screen* screen = Opened();
        for (const int tick : row.ticks)
            Tick(screen, tick);
        prompts.ExpectMessage(row.message);
        Click(screen, "cmdHware(0)");
        EXPECT_TRUE(prompts.lastTitle.empty()) << row.name;
        EXPECT_TRUE(screen->isVisible()) << row.name;
        EXPECT_EQ(Focus(screen), row.focus) << row.name;
        for (const int tick : row.ticks)
            EXPECT_TRUE(Ticked(screen, tick)) << row.name << ": what was chosen stands";
        EXPECT_EQ(state.ActiveCount, 0) << row.name;
    }
}

TEST_F(HardwareScreen, WhatEachTickShows) {
    struct Row {
        const char* name;
        std::vector<int> ticks;
        std::vector<const char*> shown, hidden;
    };
    const std::vector<Row> rows = {
        {"nothing",
         {},
         {"txtNum(0)", "Chkchl(4)", "txtC(0)", "txtC(1)", "txtC(3)", "lblC(4)"},
         {"txtNum(1)", "Fram(0)"}},
        {"pH", {0}, {"txtNum(0)", "Chkchl(4)", "txtC(1)"}, {"txtNum(1)", "Fram(0)", "Fram(1)", "FramISAB"}},
        {"pH, then ISE",
         {0, 1},
         {"txtNum(1)", "Fram(0)", "Fram(1)", "FramISAB", "txtC(0)"},
         {"txtNum(0)", "Chkchl(4)", "txtC(1)", "txtC(3)"}},
        {"ISE, then pH", {1, 0}, {"txtNum(0)", "Chkchl(4)"}, {"txtNum(1)", "Fram(0)", "Fram(1)", "FramISAB"}},
        {"sensor 1", {2}, {"txtC(1)", "lblC(0)"}, {"txtC(0)", "txtC(2)"}},
        {"both sensors", {2, 4}, {}, {"txtC(0)", "txtC(1)", "txtC(2)", "txtC(3)", "lblC(0)", "lblC(1)", "lblC(4)"}},
        {"channel 2", {3}, {"txtNum(2)", "Label1(2)", "Chkchl(4)"}, {}},
        {"channel 2 on and off", {3, 3}, {}, {"txtNum(2)", "Label1(2)"}},
    };
    for (const Row& row : rows) {
        Screen* screen = Opened();
        for (const int tick : row.ticks)
            Tick(screen, tick);
        for (const char* name : row.shown)
            EXPECT_TRUE(Find<QWidget>(screen, name)->isVisible()) << row.name << ' ' << name;
        for (const char* name : row.hidden)
            EXPECT_FALSE(Find<QWidget>(screen, name)->isVisible()) << row.name << ' ' << name;
        EXPECT_FALSE(Ticked(screen, 0) && Ticked(screen, 1)) << row.name;
    }
}

TEST_F(HardwareScreen, OneSensorServesBothChannels) {
    state.SensorCount = 1;
    Screen* screen = Opened();
    EXPECT_FALSE(Find<QWidget>(screen, "Chkchl(4)")->isEnabled());
    Tick(screen, 2);
    for (const char* hidden : {"txtC(1)", "txtC(3)", "lblC(0)"})
        EXPECT_FALSE(Find<QWidget>(screen, hidden)->isVisible()) << hidden;
}

TEST_F(HardwareScreen, EnterWalksThroughAndChangesNothing) {
    state.Channel = {0, 1, 0, 1, 0};
    Screen* screen = Opened();
    const std::string before = Text(screen, "txtC(0)");
    std::vector<std::string> passed;
    for (int i = 0; i < 40 && Focus(screen) != "cmdHware(0)"; ++i) {
        passed.push_back(Focus(screen));
        Enter(screen);
    }
    EXPECT_EQ(passed,
              (std::vector<std::string>{"Chkchl(1)", "txtNum(1)", "Chkchl(3)", "txtNum(2)", "Chkchl(2)", "txtC(0)",
                                        "txtC(2)", "Chkchl(4)", "txtC(1)", "txtC(3)", "txtC(5)", "txtC(4)", "cmbIon",
                                        "txtISAB", "cmbPort", "txtOp", "CmbFormat", "chkPrt"}));
    EXPECT_EQ(Text(screen, "txtC(0)"), before);
    EXPECT_TRUE(Ticked(screen, 1) && Ticked(screen, 3));
    EXPECT_FALSE(Ticked(screen, 2));
    Enter(screen);
    Shown(ScreenCode::frmtxt);
    EXPECT_EQ(state.IonIndex, 10);
}

TEST_F(HardwareScreen, ACustomIonThatIsCalledLikeAListedOneKeepsItsWeight) {
    AddSetting("CustomIon=no3");
    AddSetting("CustomWeight= 14.007");
    AddSetting("Channel1=1");
    AddSetting("IonIndex=25");
    Screen* screen = Opened();
    Find<QWidget>(screen, "cmbIon")->setFocus(Qt::TabFocusReason);
    Key(screen, Qt::Key_Tab);
    Click(screen, "cmdHware(0)");
    EXPECT_EQ(state.IonIndex, 25);
    EXPECT_FLOAT_EQ(state.Ions.weights[25], 14.007f);
}

TEST_F(HardwareScreen, IonsTypedAndChosen) {
    Screen* screen = Opened();
    Tick(screen, 1);
    auto* list = Find<QComboBox>(screen, "cmbIon");
    EXPECT_EQ(list->count(), 26);
    const auto choose = [&](int row) {
        list->setCurrentIndex(row);
        emit list->activated(row);
    };
    OnModal([this](Screen* dialog) {
        Put(dialog, "Nitrate (as N) \"x\", 1; =");
        Put(dialog, "14.007");
        Enter(dialog);
    });
    choose(25);
    EXPECT_EQ(S(list->currentText()), "Nitrate (as N) \"x\", 1; =");
    Click(screen, "cmdHware(0)");
    LoadState(state, {1280 * 15, 800 * 15}, folder.string());
    EXPECT_EQ(state.Ions.names[25], "Nitrate (as N) \"x\", 1; =");
    EXPECT_FLOAT_EQ(state.Ions.weights[25], 14.007f);

    screen = Opened();
    list = Find<QComboBox>(screen, "cmbIon");
    list->setFocus(Qt::TabFocusReason);
    Put(screen, "K");
    EXPECT_TRUE(screen->RemarkText().empty());
    Click(screen, "cmdHware(0)");
    EXPECT_EQ(state.IonIndex, 14) << "a listed name is its row";

    screen = Opened();
    Find<QComboBox>(screen, "cmbIon")->setFocus(Qt::TabFocusReason);
    Put(screen, "Li");
    EXPECT_NE(screen->RemarkText().find("14.007"), std::string::npos) << "the weight that it will have is told";
    Click(screen, "cmdHware(0)");
    EXPECT_EQ(state.IonIndex, 25);
    EXPECT_EQ(state.Ions.names[25], "Li");
}

TEST_F(HardwareScreen, DefaultTemperatures) {
    Screen* screen = Opened();
    struct Row {
        const char *box, *typed, *other, *shown;
        bool remark;
    };
    for (const Row& row : std::vector<Row>{{"txtC(0)", "37", "txtC(2)", "98.6", false},
                                           {"txtC(1)", "-10", "txtC(3)", "14.0", false},
                                           {"txtC(2)", "212", "txtC(0)", "100.0", false},
                                           {"txtC(0)", "25,5", "txtC(2)", "77.0", true},
                                           {"txtC(0)", "warm", "txtC(2)", "32.0", true},
                                           {"txtC(0)", "1E40", "txtC(2)", "", true}}) {
        Box(screen, row.box)->setFocus(Qt::TabFocusReason);
        Put(screen, row.typed);
        EXPECT_EQ(Text(screen, row.other), row.shown) << row.typed;
        EXPECT_EQ(!screen->RemarkText().empty(), row.remark) << row.typed;
    }
    Fill(screen, "txtC(1)", "20");
    EXPECT_EQ(Text(screen, "txtC(3)"), "68.0") << "leaving the box converts too";
}

TEST_F(HardwareScreen, LongTextsAreCutWhereTheyAreTyped) {
    Screen* screen = Opened();
    Tick(screen, 1);
    QApplication::clipboard()->setText(QString(1000, QLatin1Char('x')));
    for (const char* box : {"txtOp", "txtISAB", "txtNum(1)", "txtC(5)"})
        Box(screen, box)->clear(), Box(screen, box)->paste();
    QApplication::clipboard()->setText(QStringLiteral("Ω"));
    Box(screen, "txtOp")->paste();
    Settle();
    Click(screen, "cmdHware(0)");
    LoadState(state, {1280 * 15, 800 * 15}, folder.string());
    for (const std::string& text : {state.Operator, state.ISAB, state.ElectrodeNum[0], state.RefElectrode[0]})
        EXPECT_EQ(text, std::string(254, 'x'));
}

TEST_F(HardwareScreen, DamagedSettingsOpenAndAReadOnlyFileIsTold) {
    for (const char* line :
         {"Temperature1=1E40", "PortSetting=-7", "IonIndex=77", "DateFormat=abc", "====", "=x", "no sense"})
        AddSetting(line);
    Screen* screen = Opened();
    EXPECT_EQ(Text(screen, "txtC(2)"), "");
    EXPECT_EQ(Find<QComboBox>(screen, "cmbPort")->count(), 4);
    Tick(screen, 0);
    std::filesystem::permissions(folder / "KELVO.ini", std::filesystem::perms(0444));
    Click(screen, "cmdHware(0)");
    EXPECT_NE(Shown(ScreenCode::frmtxt)->RemarkText().find("could not be written"), std::string::npos);
    EXPECT_EQ(state.Channel[0], 1) << "it holds until the program ends";
}

TEST_F(HardwareScreen, FrameAndEscapeAskFirst) {
    Screen* screen = Opened();
    Box(screen, "txtOp")->SetText(std::string("kept"));
    for (const bool byFrame : {true, false}) {
        prompts.ExpectAsk("Are you sure you want to exit?", false);
        byFrame ? static_cast<void>(screen->close()) : Key(screen, Qt::Key_Escape);
        EXPECT_TRUE(prompts.lastDefaultNo);
        EXPECT_EQ(Text(screen, "txtOp"), "kept");
    }
    Find<QComboBox>(screen, "CmbFormat")->setCurrentIndex(1);
    EXPECT_EQ(S(Find<QLabel>(screen, "Label2(0)")->text()), "11/24/2026 09:05") << "changes still count";
}

}  // namespace
}  // namespace kelvo::test
