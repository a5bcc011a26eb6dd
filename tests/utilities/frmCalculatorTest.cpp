#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "core/frmenu.h"
#include "core/frmtxt.h"
#include "platform/Desk.h"
#include "platform/EntryBox.h"
#include "support/Scripted.h"
#include "utilities/frmacft.h"
#include "utilities/frmcnvs.h"
#include "utilities/frmselity.h"

namespace kelvo::test {
namespace {

/// The three calculators on real widgets, behind the menu, driven by keys.
class frmCalculatorTest : public testing::Test {
 protected:
    frmCalculatorTest() {
        desk.Register(ScreenCode::frmtxt, [this] { return new frmtxt(house); });
        desk.Register(ScreenCode::frmenu, [this] { return new frmenu(house); });
        desk.Register(ScreenCode::frmcnvs, [this] { return new frmcnvs(house); });
        desk.Register(ScreenCode::frmselity, [this] { return new frmselity(house); });
        desk.Register(ScreenCode::frmacft, [this] { return new frmacft(house); });
        state.MenuBranch = 2;
        desk.Show(ScreenCode::frmenu);
    }

    Screen& Open(const char* button, ScreenCode code) {
        desk.Show(ScreenCode::frmenu);
        Active(*desk.Find(ScreenCode::frmenu));
        for (auto* choice : desk.Find(ScreenCode::frmenu)->findChildren<QPushButton*>()) {
            if (choice->text() != QLatin1String(button)) continue;
            choice->setFocus();
            QTest::keyClick(choice, Qt::Key_Return);
        }
        Screen* screen = desk.Find(code);
        EXPECT_NE(screen, nullptr);
        Active(*screen);
        return *screen;
    }
    static void Active(Screen& screen) {
        screen.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }
    /// Keys go to whatever has the focus, as they do for the analyst.
    static void Type(Screen& screen, const char* text) {
        QTest::keyClicks(screen.focusWidget(), QString::fromUtf8(text));
        QTest::keyClick(screen.focusWidget(), Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    static void ChooseIon(Screen& screen, const char* ion) {
        auto* list = screen.findChild<QComboBox*>();
        ASSERT_EQ(screen.focusWidget(), list);
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClicks(list->view(), QString::fromUtf8(ion));
        QTest::keyClick(list->view(), Qt::Key_Return);
        Active(screen);
    }
    static std::string TextOf(Screen& screen, const char* box) {
        const auto* widget = screen.findChild<EntryBox*>(QString::fromUtf8(box));
        return widget == nullptr ? "no such box" : widget->Text();
    }
    static std::string Held(Screen& screen) { return S(screen.focusWidget()->objectName()); }
    static QAction* Item(Screen& screen, const char* text) {
        for (auto* action : screen.findChildren<QAction*>())
            if (action->text().remove(QLatin1Char('&')) == QLatin1String(text)) return action;
        return nullptr;
    }

    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    Desk desk{state};
    House house{state, prompts, files, clock, desk};
};

TEST_F(frmCalculatorTest, ConversionByKeyboardFromTheMenu) {
    Screen& screen = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    EXPECT_EQ(S(screen.windowTitle()), "Kelvo : Conversion of Concentration Units");
    EXPECT_EQ(screen.objectName(), "frmcnvs");
    EXPECT_EQ(state.HelpTopic, 5);
    EXPECT_EQ(state.ReturnScreen, 4);
    EXPECT_FALSE(desk.IsShown(ScreenCode::frmenu));
    EXPECT_EQ(Held(screen), "cmbcvt");
    ChooseIon(screen, "Ca");
    EXPECT_EQ(Held(screen), "txtv(0)");
    Type(screen, "120");
    EXPECT_EQ(TextOf(screen, "txtv(1)"), "2.994E-3");
    EXPECT_EQ(TextOf(screen, "txtv(12)"), "-2.524");
    Type(screen, "1.2");
    EXPECT_EQ(TextOf(screen, "txtv(3)"), "100.000");
    EXPECT_EQ(TextOf(screen, "txtv(4)"), "10.0000");
    Type(screen, "100");
    Type(screen, "10");
    Type(screen, "1000");
    EXPECT_EQ(TextOf(screen, "txtv(10)"), "1.000");
    EXPECT_EQ(TextOf(screen, "txtv(11)"), "100");
    EXPECT_EQ(Held(screen), "cmbcvt");

    QTest::keyClick(screen.focusWidget(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(screen.findChild<QComboBox*>("cmbcvt")->currentIndex(), -1);
    EXPECT_EQ(TextOf(screen, "txtv(0)"), "");
    EXPECT_EQ(TextOf(screen, "txtv(12)"), "-2.524");
}

TEST_F(frmCalculatorTest, ActivityByKeyboardFromTheMenu) {
    Screen& screen = Open("Activity Coefficients", ScreenCode::frmacft);
    EXPECT_EQ(S(screen.windowTitle()), "Kelvo : Activity Coefficients");
    EXPECT_EQ(state.HelpTopic, 6);
    ChooseIon(screen, "Ca");
    EXPECT_EQ(Held(screen), "txtac(1)");
    Type(screen, "0.1");
    EXPECT_EQ(TextOf(screen, "txtac(2)"), "0.439");
    EXPECT_EQ(Held(screen), "txtac(3)");
    Type(screen, "43.9");
    EXPECT_EQ(TextOf(screen, "txtac(5)"), "100.000");
    EXPECT_EQ(TextOf(screen, "txtac(6)"), "2.495E-3");
    EXPECT_EQ(Held(screen), "cmbacion");
}

TEST_F(frmCalculatorTest, SelectivityByKeyboardFromTheMenu) {
    Screen& screen = Open("ISE Selectivity", ScreenCode::frmselity);
    EXPECT_EQ(state.HelpTopic, 4);
    ChooseIon(screen, "Br");
    EXPECT_EQ(Held(screen), "txtC");
    const auto* absent = screen.findChild<EntryBox*>("txtseco(0)");
    EXPECT_EQ(absent->Text(), "must be absent");
    EXPECT_EQ(absent->font().pointSizeF(), 8.25);
    EXPECT_FALSE(screen.findChild<EntryBox*>("txtif(0)")->isEnabled());
    EXPECT_FALSE(screen.findChild<EntryBox*>("txtion(5)")->isEnabled());
    Type(screen, "2.4");
    EXPECT_EQ(TextOf(screen, "txtcoce(3)"), "100.00");
    EXPECT_EQ(Held(screen), "txtif(3)");
    Type(screen, "50");
    EXPECT_EQ(TextOf(screen, "txtcf(3)"), "5.00");
    EXPECT_EQ(TextOf(screen, "txtsum"), "5.00");
    EXPECT_EQ(Held(screen), "txtif(4)");

    QTest::keyClick(screen.focusWidget(), Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(Held(screen), "cmbIon");
    ChooseIon(screen, "Ba");
    EXPECT_GT(absent->font().pointSizeF(), 8.25);
    EXPECT_EQ(TextOf(screen, "txtseco(0)"), " 0.085");
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
        Screen& screen = Open(row.button, row.code);
        auto* box = screen.findChild<EntryBox*>(QString::fromUtf8(row.box));
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
        EXPECT_EQ(screen.focusWidget(), box);
    }
}

TEST_F(frmCalculatorTest, EveryWayOutLeadsToTheMenu) {
    for (const char* way : {"Close", "Back", "frame"}) {
        SCOPED_TRACE(way);
        Screen& screen = Open("Activity Coefficients", ScreenCode::frmacft);
        state.IsePath[1] = 1;
        state.PhPath[2] = 1;
        if (std::string(way) == "frame") {
            screen.close();
        } else {
            Item(screen, way)->trigger();
        }
        EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmacft));
        EXPECT_TRUE(desk.IsShown(ScreenCode::frmenu));
        EXPECT_EQ(state.IsePath[1] + state.PhPath[2], 0);
        EXPECT_EQ(state.ReturnScreen, 0);
    }
}

TEST_F(frmCalculatorTest, NothingIsKeptWhenClosed) {
    Screen& first = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    ChooseIon(first, "Ca");
    Type(first, "120");
    Item(first, "Back")->trigger();
    Screen& second = Open("Conversion / Dilution", ScreenCode::frmcnvs);
    EXPECT_EQ(second.findChild<QComboBox*>()->currentIndex(), -1);
    for (const auto* box : second.findChildren<EntryBox*>())
        EXPECT_EQ(box->Text(), "") << S(box->objectName());
}

TEST_F(frmCalculatorTest, ExitAsksWithNoAsItsAnswer) {
    Screen& screen = Open("Activity Coefficients", ScreenCode::frmacft);
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Item(screen, "Exit")->trigger();
    EXPECT_TRUE(prompts.lastDefaultNo);
    EXPECT_FALSE(desk.Ended());
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    Item(screen, "Exit")->trigger();
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
        Screen& screen = Open(row.button, row.code);
        std::string order = Held(screen);
        for (int step = 0; step < 12; ++step) {
            QTest::keyClick(screen.focusWidget(), Qt::Key_Tab);
            order += " " + Held(screen);
            if (step > 0 && screen.focusWidget() == screen.findChild<QComboBox*>()) break;
        }
        EXPECT_EQ(order, row.order);
        for (const auto* box : screen.findChildren<EntryBox*>())
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
