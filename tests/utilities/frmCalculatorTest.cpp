#include "support/Stage.h"

namespace kelvo::test {
namespace {

/// The three calculators on real widgets, from the menu on, driven by keys.
class frmCalculatorTest : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.MenuBranch = 2;
    }

    /// Opens a calculator by the button of the menu that has the caption.
    Screen* Open(const char* caption, ScreenCode code) {
        desk.Show(ScreenCode::frmenu);
        Screen* menu = Shown(ScreenCode::frmenu);
        for (auto* button : menu->findChildren<QPushButton*>())
            if (button->text() == QLatin1String(caption)) button->setFocus();
        Enter(menu);
        Screen* screen = Shown(code);
        Activate(screen);
        return screen;
    }
    static void Activate(Screen* screen) {
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen));
    }
    /// A button pressed by its key shows itself pressed for a moment before it acts.
    static void RefreshByKey(Screen* screen) {
        Key(screen, Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([screen] { return IonBox(screen)->currentIndex() == -1; }));
    }
    static QComboBox* IonBox(Screen* screen) { return screen->findChild<QComboBox*>(); }
    /// Letters open the ion box and search it, Enter chooses.
    static void ChooseIon(Screen* screen, const char* ion) {
        ASSERT_EQ(screen->focusWidget(), IonBox(screen));
        QTest::keyClick(IonBox(screen), Qt::Key_Down);
        QTest::keyClicks(IonBox(screen)->view(), QString::fromUtf8(ion));
        QTest::keyClick(IonBox(screen)->view(), Qt::Key_Return);
        Activate(screen);
    }
};

TEST_F(frmCalculatorTest, TheBranchIsOpenWithoutAnyChannel) {
    state.Channel = {};
    desk.Show(ScreenCode::frmtxt);
    Screen* start = Shown(ScreenCode::frmtxt);
    Click(start, QStringLiteral("cmdMain(2)"));
    Screen* menu = Shown(ScreenCode::frmenu);
    EXPECT_EQ(S(menu->windowTitle()), "Kelvo : Laboratory Utilities");
    EXPECT_EQ(S(Find<QLabel>(menu, "labmnu")->text()), "Labkit");
    const char* const captions[] = {"Conversion / Dilution", "ISE Selectivity", "Activity Coefficients"};
    for (int i = 0; i < 6; ++i) {
        const auto* button = Find<QPushButton>(menu, QStringLiteral("cmdSub(%1)").arg(i));
        EXPECT_EQ(button->isVisible(), i < 3);
        EXPECT_EQ(Find<QLabel>(menu, QStringLiteral("LABTITAL(%1)").arg(i))->isVisible(), i < 3);
        if (i >= 3) continue;
        EXPECT_EQ(S(button->text()), captions[i]);
        EXPECT_TRUE(button->isEnabled());
    }
}

TEST_F(frmCalculatorTest, ConversionByKeyboardFromTheMenu) {
    Screen* screen = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    EXPECT_EQ(S(screen->windowTitle()), "Kelvo : Conversion of Concentration Units");
    EXPECT_EQ(screen->objectName(), "frmcnvs");
    EXPECT_EQ(state.HelpTopic, 5);
    EXPECT_EQ(state.ReturnScreen, 4);
    EXPECT_FALSE(desk.IsShown(ScreenCode::frmenu));
    EXPECT_EQ(Focus(screen), "cmbcvt");
    ChooseIon(screen, "Ca");
    EXPECT_EQ(Focus(screen), "txtv(0)");
    Put(screen, "120");
    EXPECT_EQ(Text(screen, "txtv(1)"), "2.994E-3");
    EXPECT_EQ(Text(screen, "txtv(12)"), "-2.524");
    Put(screen, "1.2");
    EXPECT_EQ(Text(screen, "txtv(3)"), "100.000");
    EXPECT_EQ(Text(screen, "txtv(4)"), "10.0000");
    Put(screen, "100");
    Put(screen, "10");
    Put(screen, "1000");
    EXPECT_EQ(Text(screen, "txtv(10)"), "1.000");
    EXPECT_EQ(Text(screen, "txtv(11)"), "100");
    EXPECT_EQ(Focus(screen), "cmbcvt");

    RefreshByKey(screen);
    EXPECT_EQ(IonBox(screen)->currentIndex(), -1);
    EXPECT_EQ(Text(screen, "txtv(0)"), "");
    EXPECT_EQ(Text(screen, "txtv(12)"), "-2.524");
}

TEST_F(frmCalculatorTest, ActivityByKeyboardFromTheMenu) {
    Screen* screen = Open("Activity Coefficients", ScreenCode::frmacft);
    EXPECT_EQ(S(screen->windowTitle()), "Kelvo : Activity Coefficients");
    EXPECT_EQ(state.HelpTopic, 6);
    ChooseIon(screen, "Ca");
    EXPECT_EQ(Focus(screen), "txtac(1)");
    Put(screen, "0.1");
    EXPECT_EQ(Text(screen, "txtac(2)"), "0.439");
    EXPECT_EQ(Focus(screen), "txtac(3)");
    Put(screen, "43.9");
    EXPECT_EQ(Text(screen, "txtac(5)"), "100.000");
    EXPECT_EQ(Text(screen, "txtac(6)"), "2.495E-3");
    EXPECT_EQ(Focus(screen), "cmbacion");
}

TEST_F(frmCalculatorTest, SelectivityByKeyboardFromTheMenu) {
    Screen* screen = Open("ISE Selectivity", ScreenCode::frmselity);
    EXPECT_EQ(state.HelpTopic, 4);
    ChooseIon(screen, "Br");
    EXPECT_EQ(Focus(screen), "txtC");
    const auto* absent = Box(screen, "txtseco(0)");
    EXPECT_EQ(absent->Text(), "must be absent");
    EXPECT_EQ(absent->font().pointSizeF(), 8.25);
    EXPECT_FALSE(Box(screen, "txtif(0)")->isEnabled());
    EXPECT_FALSE(Box(screen, "txtion(5)")->isEnabled());
    Put(screen, "2.4");
    EXPECT_EQ(Text(screen, "txtcoce(3)"), "100.00");
    EXPECT_EQ(Focus(screen), "txtif(3)");
    Put(screen, "50");
    EXPECT_EQ(Text(screen, "txtcf(3)"), "5.00");
    EXPECT_EQ(Text(screen, "txtsum"), "5.00");
    EXPECT_EQ(Focus(screen), "txtif(4)");

    RefreshByKey(screen);
    EXPECT_EQ(Focus(screen), "cmbIon");
    IonBox(screen)->setCurrentIndex(1);
    EXPECT_GT(absent->font().pointSizeF(), 8.25);
    EXPECT_EQ(Text(screen, "txtseco(0)"), " 0.085");
}

TEST_F(frmCalculatorTest, ForeignKeysAreRefusedInTheWordsOfTheScreen) {
    const struct {
        const char* button;
        ScreenCode code;
        const char *box, *told;
    } rows[] = {{"Conversion / Dilution", ScreenCode::frmcnvs, "txtv(0)", "Wrong data type, please re-enter"},
                {"Activity Coefficients", ScreenCode::frmacft, "txtac(1)", "Wrong data type, please re-enter."},
                {"ISE Selectivity", ScreenCode::frmselity, "txtC", "Wrong data type input, please re-entre it"}};
    for (const auto& row : rows) {
        Screen* screen = Open(row.button, row.code);
        auto* box = Box(screen, QString::fromUtf8(row.box));
        box->setFocus();
        QTest::keyClicks(box, QStringLiteral("1"));
        prompts.ExpectMessage(row.told);
        QTest::keyClicks(box, QStringLiteral(","));
        QCoreApplication::processEvents();
        prompts.ExpectMessage(row.told);
        QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
        box->paste();
        QCoreApplication::processEvents();
        EXPECT_EQ(box->Text(), "1");
        EXPECT_EQ(screen->focusWidget(), box);
    }
}

TEST_F(frmCalculatorTest, EveryWayOutLeadsToTheMenu) {
    for (const char* way : {"mnuFile(1)", "mnuBack", "frame"}) {
        SCOPED_TRACE(way);
        Screen* screen = Open("Activity Coefficients", ScreenCode::frmacft);
        state.IsePath[1] = 1;
        state.PhPath[2] = 1;
        if (std::string(way) == "frame") {
            screen->close();
        } else {
            Choose(screen, QString::fromUtf8(way));
        }
        EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmacft));
        EXPECT_TRUE(desk.IsShown(ScreenCode::frmenu));
        EXPECT_EQ(state.IsePath[1] + state.PhPath[2], 0);
        EXPECT_EQ(state.ReturnScreen, 0);
    }
}

TEST_F(frmCalculatorTest, NothingIsKeptWhenClosed) {
    Screen* first = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    ChooseIon(first, "Ca");
    Put(first, "120");
    Choose(first, QStringLiteral("mnuBack"));
    Screen* second = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    EXPECT_EQ(IonBox(second)->currentIndex(), -1);
    for (const auto* box : second->findChildren<EntryBox*>())
        EXPECT_EQ(box->Text(), "") << S(box->objectName());
}

TEST_F(frmCalculatorTest, ExitAsksWithNoAsItsAnswer) {
    Screen* screen = Open("Activity Coefficients", ScreenCode::frmacft);
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Choose(screen, QStringLiteral("mnuFile(2)"));
    EXPECT_TRUE(prompts.lastDefaultNo);
    EXPECT_FALSE(desk.Ended());
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    Choose(screen, QStringLiteral("mnuFile(2)"));
    EXPECT_TRUE(desk.Ended());
}

TEST_F(frmCalculatorTest, TabPassesEntriesOnlyAndEveryControlIsNamed) {
    const struct {
        const char* button;
        ScreenCode code;
        const char* order;
    } rows[] = {
        {"Conversion / Dilution", ScreenCode::frmcnvs,
         "cmbcvt txtv(0) txtv(1) txtv(2) txtv(5) txtv(6) txtv(7) txtv(8) txtv(9) cmdcancel cmbcvt"},
        {"Activity Coefficients", ScreenCode::frmacft,
         "cmbacion txtac(0) txtac(1) txtac(3) txtac(4) txtac(5) txtac(6) cmdaccel cmbacion"},
        {"ISE Selectivity", ScreenCode::frmselity, "cmbIon txtC cmdCancel cmbIon"},
    };
    for (const auto& row : rows) {
        Screen* screen = Open(row.button, row.code);
        std::string order = Focus(screen);
        for (int step = 0; step < 12; ++step) {
            Key(screen, Qt::Key_Tab);
            order += " " + Focus(screen);
            if (step > 0 && screen->focusWidget() == IonBox(screen)) break;
        }
        EXPECT_EQ(order, row.order);
        for (const auto* box : screen->findChildren<EntryBox*>())
            EXPECT_FALSE(box->accessibleName().isEmpty()) << S(box->objectName());
    }
}

TEST_F(frmCalculatorTest, FitsTheSmallestDisplay) {
    for (const auto code : {ScreenCode::frmcnvs, ScreenCode::frmacft, ScreenCode::frmselity}) {
        const QSize least = desk.Load(code).minimumSizeHint();
        EXPECT_LE(least.width(), 1024) << S(desk.Find(code)->objectName());
        EXPECT_LE(least.height(), 720) << S(desk.Find(code)->objectName());
    }
}

}  // namespace
}  // namespace kelvo::test
