#include "support/Patience.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

/// The three calculators on real widgets, from the menu on, driven by keys.
class CalculatorViewTest : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        state.MenuBranch = 2;
    }

    /// Opens a calculator by the button of the menu that has the caption.
    Screen* Open(const char* caption, ScreenCode code) {
        screens.Show(ScreenCode::frmenu);
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
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen, PatienceMs));
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

TEST_F(CalculatorViewTest, EachByKeyboardFromTheMenu) {
    const struct {
        const char* button;
        ScreenCode code;
        int helpTopic;
        const char *tabOrder, *ion, *told, *entries, *box, *shown, *next;
    } rows[] = {
        {"Conversion / Dilution", ScreenCode::frmcnvs, 5,
         "cmbcvt txtv(0) txtv(1) txtv(12) txtv(2) txtv(3) txtv(4) txtv(5) txtv(6) txtv(7) txtv(8) txtv(9) txtv(10) "
         "txtv(11) cmdcancel cmbcvt",
         "Ca", "Wrong data type, please re-enter", "120 1.2 100 10 1000", "txtv(4)", "10.0000", "cmbcvt"},
        {"Activity Coefficients", ScreenCode::frmacft, 6,
         "cmbacion txtac(0) txtac(1) txtac(2) txtac(3) txtac(4) txtac(5) txtac(6) cmdaccel cmbacion", "Ca",
         "Wrong data type, please re-enter.", "0.1 43.9", "txtac(5)", "100.000", "cmbacion"},
        {"ISE Selectivity", ScreenCode::frmselity, 4, "cmbIon txtC txtsum cmdCancel cmbIon", "Br",
         "Wrong data type input, please re-entre it", "2.4 50", "txtsum", "5.00", "txtif(4)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.button);
        Screen* screen = Open(row.button, row.code);
        EXPECT_EQ(state.HelpTopic, row.helpTopic);
        std::string order = Focus(screen);
        for (int step = 0; step < 20 && (step == 0 || screen->focusWidget() != IonBox(screen)); ++step) {
            Key(screen, Qt::Key_Tab);
            order += " " + Focus(screen);
        }
        EXPECT_EQ(order, row.tabOrder);
        ChooseIon(screen, row.ion);
        auto* box = qobject_cast<EntryBox*>(screen->focusWidget());
        ASSERT_NE(box, nullptr);
        Keys(screen, "1");
        prompts.ExpectMessage(row.told);
        Keys(screen, ",");
        prompts.ExpectMessage(row.told);
        QGuiApplication::clipboard()->setText(QStringLiteral("2,5"));
        box->paste();
        QCoreApplication::processEvents();
        EXPECT_EQ(box->Text(), "1");
        std::istringstream entries(row.entries);
        for (std::string entry; entries >> entry;)
            Put(screen, entry.c_str());
        EXPECT_EQ(Text(screen, row.box), row.shown);
        EXPECT_EQ(Focus(screen), row.next);
    }
    Screen* screen = Shown(ScreenCode::frmselity);
    EXPECT_EQ(Text(screen, "txtseco(0)"), "must be absent");
    EXPECT_FALSE(Box(screen, "txtif(0)")->isEnabled() || Box(screen, "txtion(5)")->isEnabled());
    // A button pressed by its key shows itself pressed for a moment before it acts.
    Key(screen, Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return IonBox(screen)->currentIndex() == -1; }, PatienceMs));
    EXPECT_EQ(Text(screen, "txtseco(0)") + Focus(screen), "cmbIon");
}

TEST_F(CalculatorViewTest, EveryWayOutLeadsToTheMenuAndKeepsNothing) {
    for (const char* way : {"mnuFile(1)", "mnuBack", "frame"}) {
        SCOPED_TRACE(way);
        Screen* screen = Open("Activity Coefficients", ScreenCode::frmacft);
        EXPECT_EQ(IonBox(screen)->currentIndex(), -1);
        EXPECT_EQ(Text(screen, "txtac(1)"), "");
        ChooseIon(screen, "Ca");
        Put(screen, "0.1");
        if (std::string(way) == "frame") {
            screen->close();
        } else {
            Choose(screen, QString::fromUtf8(way));
        }
        EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmacft));
        EXPECT_TRUE(screens.IsShown(ScreenCode::frmenu));
        EXPECT_EQ(state.ReturnScreen, 0);
    }
}

TEST_F(CalculatorViewTest, ASmallWindowScrollsToWhatHasTheFocusAndEscapeGoesBack) {
    for (const auto& [button, code] : {std::pair{"Conversion / Dilution", ScreenCode::frmcnvs},
                                       {"Activity Coefficients", ScreenCode::frmacft},
                                       {"ISE Selectivity", ScreenCode::frmselity}}) {
        SCOPED_TRACE(button);
        Screen* screen = Open(button, code);
        screen->resize(500, 300);
        ProcessEvents();
        EXPECT_EQ(screen->size(), QSize(500, 300)) << "smaller than its content";
        const auto* body = screen->findChild<QScrollArea*>("body");
        EXPECT_GT(body->verticalScrollBar()->maximum() + body->horizontalScrollBar()->maximum(), 0);
        const auto boxes = screen->findChildren<EntryBox*>();
        for (EntryBox* box : boxes) {
            const QFontMetrics letters(box->font());
            EXPECT_GE(box->height(), letters.height() + 4) << FromQt(box->objectName());
            EXPECT_GE(box->width(), letters.horizontalAdvance(QStringLiteral("12,345.678")) + 20);
            box->setFocus();
            ProcessEvents();
            const QRect seen(box->mapTo(body->viewport(), QPoint(0, 0)), box->size());
            EXPECT_TRUE(!box->hasFocus() || body->viewport()->rect().contains(seen)) << FromQt(box->objectName());
        }
        Key(screen, Qt::Key_Escape);
        EXPECT_FALSE(screens.IsLoaded(code));
        EXPECT_TRUE(Shown(ScreenCode::frmenu)->isVisible());
    }
}

}  // namespace
}  // namespace kelvo::test
