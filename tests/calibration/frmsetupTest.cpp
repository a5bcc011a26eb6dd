#include "core/Settings.h"
#include "support/Stage.h"

namespace kelvo::test {
namespace {

class SetupScreen : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.Channel[1] = 1;
        state.IonIndex = 10;
    }
    Screen* Opened() {
        desk.Close(ScreenCode::frmsetup);
        desk.Show(ScreenCode::frmsetup);
        return Shown(ScreenCode::frmsetup);
    }
    std::string Setting(const char* key) { return ReadSetting("Setting", key, state.IniPath); }
};

TEST_F(SetupScreen, OkRefusesWhatIsMissingAndLeadsThere) {
    struct Row {
        const char* name;
        std::function<void(Screen*)> doing;
        const char* message;
        const char* focus;
    };
    const auto clear = [](const char* list) {
        return [list](Screen* setup) { Find<QComboBox>(setup, list)->setCurrentIndex(-1); };
    };
    const auto spin = [](const char* text) {
        return [text](Screen* setup) { Box(setup, "txtspin")->SetText(std::string(text)); };
    };
    const char* const scales = "Setup is incomplete, please select the scale(s) and other options";
    const char* const wrong = "Wrong data type, please re-enter an integer (2 to 10)";
    const std::vector<Row> rows = {
        {"no mV scale", clear("cmbspE"), scales, "cmbspE"},
        {"no LogC scale", clear("CmbspC"), scales, "CmbspC"},
        {"no ion", clear("cmbspion"), "Setup is incomplete, please select an ion and other options", "cmbspion"},
        {"no way of input", [](Screen* setup) { Click(setup, "chkdat(0)"); },
         "Setup is incomplete, please select 'Keyboard Input or On line Reading' and other options", "chkdat(0)"},
        {"no number", spin(""), wrong, "txtspin"},
        {"a number without Enter", spin("11"), wrong, "txtspin"},
        {"half a point", spin("2.5"), wrong, "txtspin"},
    };
    for (const Row& row : rows) {
        Screen* setup = Opened();
        row.doing(setup);
        Find<QPushButton>(setup, "cmdspok")->setFocus();
        prompts.ExpectMessage(row.message);
        Enter(setup);
        EXPECT_TRUE(prompts.lastTitle.empty());
        EXPECT_EQ(Focus(setup), row.focus) << row.name;
        EXPECT_EQ(state.CaliDirty, 0) << row.name;
        EXPECT_EQ(state.IonIndex, 10) << row.name;
        EXPECT_EQ(Setting("CaliPtr"), "4") << row.name << ": nothing is written";
    }
}

TEST_F(SetupScreen, NumberOfPoints) {
    Screen* setup = Opened();
    struct Row {
        const char *typed, *left;
        int refused;
    };
    for (const Row& row : std::vector<Row>{
             {"11", "10", 0}, {"1", "2", 0}, {"8", "8", 0}, {"29", "2", 1}, {"10", "2", 1}, {"5x", "5", 1}}) {
        Box(setup, "txtspin")->setFocus(Qt::TabFocusReason);
        for (int i = 0; i < row.refused; ++i)
            prompts.ExpectMessage("Wrong data type, please re-enter an integer (2 to 10)");
        Put(setup, row.typed);
        EXPECT_EQ(Text(setup, "txtspin"), row.left) << row.typed;
        EXPECT_EQ(Focus(setup), "chkdat(0)") << row.typed;
    }
    for (int i = 0; i < 8; ++i)
        Click(setup, "Spin2(1)");
    EXPECT_EQ(Text(setup, "txtspin"), "10");
    for (int i = 0; i < 12; ++i)
        Click(setup, "Spin2(0)");
    EXPECT_EQ(Text(setup, "txtspin"), "1") << "the arrows alone reach one point";
    EXPECT_NE(setup->RemarkText().find("One point"), std::string::npos);
    QApplication::clipboard()->setText(QStringLiteral("abc"));
    prompts.ExpectMessage("Wrong data type, please re-enter an integer (2 to 10)");
    Box(setup, "txtspin")->paste();
    Settle();
    EXPECT_EQ(Text(setup, "txtspin"), "1");
}

TEST_F(SetupScreen, TheChosenIonShowsAndItsStaleLimitsAreTold) {
    Screen* setup = Opened();
    const auto picture = [&] { return Find<QWidget>(setup, "picPreview")->grab().toImage(); };
    const QImage before = picture();
    auto* list = Find<QComboBox>(setup, "cmbspion");
    list->setCurrentIndex(14);
    emit list->activated(14);
    EXPECT_NE(picture(), before) << "the preview names the ion";
    EXPECT_EQ(S(Find<QComboBox>(setup, "CmbspC")->itemText(1)), " -5 ... -1  (0.19...1,900)");
    EXPECT_NE(setup->RemarkText().find("those of F"), std::string::npos);
    EXPECT_EQ(state.IonIndex, 10) << "until Ok";
    OnModal([](Screen* dialog) { Key(dialog, Qt::Key_Escape); });
    list->setCurrentIndex(25);
    emit list->activated(25);
    EXPECT_EQ(S(list->currentText()), "Custom");
}

TEST_F(SetupScreen, EnterWalksToOk) {
    Screen* setup = Opened();
    std::vector<std::string> passed;
    for (int i = 0; i < 12 && Focus(setup) != "cmdspok"; ++i) {
        passed.push_back(Focus(setup));
        Enter(setup);
    }
    EXPECT_EQ(passed, (std::vector<std::string>{"cmbspE", "CmbspC", "cmbspion", "txtspin", "chkdat(0)"}));
    EXPECT_TRUE(Find<QCheckBox>(setup, "chkdat(0)")->isChecked());
}

TEST_F(SetupScreen, CancellingAPointReturnsWithTheChoices) {
    Screen* setup = Opened();
    Find<QComboBox>(setup, "cmbspE")->setCurrentIndex(3);
    OnModal([this](Screen* point) {
        Put(point, "-54");
        Put(point, "1000");
        Click(point, "cmdok");
    });
    OnModal([this](Screen* point) {
        Key(point, Qt::Key_Escape);
        EXPECT_TRUE(point->isVisible()) << "Escape drops no points";
        EXPECT_EQ(Focus(point), "cmdcancel");
        point->close();
        EXPECT_TRUE(point->isVisible()) << "nor does the frame";
        EXPECT_FALSE(point->RemarkText().empty());
        Enter(point);
    });
    Click(setup, "cmdspok");
    EXPECT_EQ(Shown(ScreenCode::frmsetup), setup);
    EXPECT_EQ(Find<QComboBox>(setup, "cmbspE")->currentIndex(), 3);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::fmISEcli));
    EXPECT_EQ(state.CaliPoints, 0);
    EXPECT_EQ(state.CaliDirty, 0);
    EXPECT_EQ(Setting("mV"), "3");
    EXPECT_EQ(Setting("DataMode"), "0");
    EXPECT_EQ(ReadSetting("Hareware", "ASD", state.IniPath), "-1") << "no stability watch";
    state.IsePath[1] = 1;
    Click(setup, "cmdspcel");
    Shown(ScreenCode::frmenu);
    EXPECT_EQ(state.IsePath[1], 0);
}

}  // namespace
}  // namespace kelvo::test
