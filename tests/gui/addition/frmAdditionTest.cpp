#include "addition/frmAddition.h"

#include "support/Patience.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

/// Both addition screens on real widgets, from the menu on, driven by keys.
class frmAdditionTest : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        state.MenuBranch = 1;
        state.Channel[1] = 1;
        state.IonIndex = 10;
        state.CaliSlope = state.LastSlope = -58;
        state.FileTemp = "25";
        state.FileDate = "23/11/2026 10:00";
    }
    Screen* Open(int button, ScreenCode code) {
        screens.Show(ScreenCode::frmenu);
        Screen* menu = Shown(ScreenCode::frmenu);
        Find<QPushButton>(menu, QStringLiteral("cmdSub(%1)").arg(button))->setFocus();
        Enter(menu);
        Screen* screen = Shown(code);
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen, PatienceMs));
        return screen;
    }
};

TEST_F(frmAdditionTest, EachByKeyboardFromTheMenu) {
    const struct {
        int button;
        ScreenCode code;
        int helpTopic;
        const char *entries, *calculate, *tick, *comment, *row, *wrongKey;
    } rows[] = {
        {3, ScreenCode::frmStanad01, 2, "50 20 1000 80 51 25", "cmdstrslt(0)", "chkptl(1)", "labcomet",
         " 1\tLake\t09:05\t25\t 77\t50\t2.0\t1000\t5.26E-2\t80\t51\t17.48\t9.20E-4",
         "Data out of range, pleas re-enter"},
        {4, ScreenCode::frmSampa, 3, "5 100 5 120 100 25", "cmdsmrslt(0)", "chksmptl(1)", "Labcomet",
         " 1\tLake\t09:05\t25\t 77\t5\t50.00\t5\t2.63E-4\t120\t100\t71.67\t3.77E-3",
         "Data out of range, please re-enter"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.calculate);
        Screen* screen = Open(row.button, row.code);
        EXPECT_EQ(state.HelpTopic, row.helpTopic);
        EXPECT_EQ(state.ReturnScreen, static_cast<int>(row.code));
        EXPECT_FALSE(Find<QCheckBox>(screen, row.tick)->isEnabled() ||
                     Find<QAction>(screen, "mnuPrint(1)")->isEnabled());
        EXPECT_EQ(Text(screen, "txtbox(11)") + Focus(screen), "-58txtbox(0)");
        // 1024×720 at a scale of 1.5.
        screen->resize(683, 480);
        ProcessEvents();
        const auto* comment = Find<QLabel>(screen, row.comment);
        EXPECT_EQ(comment->visibleRegion().boundingRect(), comment->rect()) << "in sight from the beginning";
        // A key that is no number is told and stays; the number at its head counts.
        prompts.ExpectMessage("Wrong data type, please re-enter");
        Keys(screen, "0,5");
        EXPECT_EQ(Text(screen, "txtbox(0)"), "0,5");
        prompts.ExpectMessage(row.wrongKey);
        Enter(screen);
        std::istringstream entries(row.entries);
        for (std::string entry; entries >> entry;)
            Put(screen, entry.c_str());
        EXPECT_EQ(Focus(screen), row.calculate);
        prompts.ExpectAskToSave("Would you like to save these data?", true);
        const std::string name = row.button == 3 ? "a.sdt" : "a.smt";
        files.Expect(Path(name));
        OnModal([screen, &row](Screen* number) {
            EXPECT_EQ(FromQt(Find<QLabel>(screen, row.comment)->text()), "Good measurement")
                << "seen before the questions";
            Put(number, "Lake");
        });
        Enter(screen);
        const std::string saved = row.row;
        EXPECT_EQ(dataTable.RowText(1), saved);
        EXPECT_NE(Content(row.button == 3 ? "A.SDT" : "A.SMT").find(saved + "\r\n"), std::string::npos);
        EXPECT_TRUE(Find<QAction>(screen, "mnuPrint(1)")->isEnabled());
        EXPECT_TRUE(Find<QCheckBox>(screen, row.tick)->isEnabled() == screens.Knows(ScreenCode::frmPtset));
        OnModal([](Screen* number) { Put(number, "Pond"); });
        Choose(screen, "mnuSaveData");
        EXPECT_EQ(dataTable.Cell(2, 1), "Pond");
        prompts.ExpectMessage("Your data have been saved: " + Path(row.button == 3 ? "A.SDT" : "A.SMT"));
        Choose(screen, "mnuBack");
        Shown(ScreenCode::frmenu);
        EXPECT_EQ(state.ReturnScreen, 0);
        EXPECT_FALSE(screens.IsLoaded(row.code));
    }
}

TEST_F(frmAdditionTest, ThePointerAndTheIonBox) {
    Screen* screen = Open(3, ScreenCode::frmStanad01);
    for (const char* entry : {"50", "20", "1000"})
        Put(screen, entry);
    EXPECT_EQ(Text(screen, "txtbox(8)"), "2.0");
    QTest::mouseClick(Box(screen, "txtbox(9)"), Qt::LeftButton);
    EXPECT_EQ(Text(screen, "txtbox(8)"), "");
    auto* ion = Find<QComboBox>(screen, "cmbIon");
    for (const Qt::Key key : {Qt::Key_C, Qt::Key_Return}) {
        ion->setFocus();
        QTest::keyClick(ion, key);
        EXPECT_EQ(Focus(screen), "txtbox(3)");
    }
    EXPECT_EQ(ion->currentIndex(), 10);
    screens.Show(ScreenCode::frmSampa);
    Screen* sample = Shown(ScreenCode::frmSampa);
    auto* fixed = Find<QComboBox>(sample, "cmbIon");
    fixed->setFocus();
    QTest::keyClick(fixed, Qt::Key_C);
    QTest::keyClick(fixed->view(), Qt::Key_Return);
    EXPECT_EQ(Focus(sample) + std::to_string(fixed->currentIndex()), "cmbIon10")
        << "no key moves on, no ion but its own";
    screens.Close(ScreenCode::frmSampa);
    screen->activateWindow();
    Box(screen, "txtbox(3)")->setFocus();
    Box(screen, "txtbox(3)")->selectAll();
    Key(screen, Qt::Key_Backspace);
    EXPECT_EQ(Text(screen, "txtbox(4)"), "");
    EXPECT_TRUE(Box(screen, "txtbox(3)")->property("nextField").toBool());
    Key(screen, Qt::Key_Escape);
    EXPECT_TRUE(screen->isVisible()) << "what is typed is not led away";
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    screen->close();
    EXPECT_TRUE(screen->isVisible());
}

TEST_F(frmAdditionTest, SeveralAdditionsByKeyboardIntoTheSameTable) {
    Screen* screen = Open(3, ScreenCode::frmStanad01);
    for (const char* entry : {"50", "20", "1000"})
        Put(screen, entry);
    prompts.ExpectInput("Plan Additions", "4");
    files.Expect(Path("a.sdt"));
    OnModal([&](Screen* several) {
        EXPECT_EQ(Text(several, "txtAddition(0)") + " " + Text(several, "txtAddition(2)") + " " + Focus(several),
                  "50 -58 txtAddition(19)");
        EXPECT_EQ(FromQt(Find<QLabel>(several, "lblResult")->text()), "The potential before the additions is missing.");
        Choose(several, "mnuAPlan");
        EXPECT_EQ(several->StatusText(), "Each addition changes the potential by about 17 mV.");
        EXPECT_EQ(Text(several, "txtAddition(9)"), "1.00");
        Find<EntryBox>(several, "txtAddition(19)")->setFocus();
        for (const char* entry : {"44.6", "1", "27.7", "2", "11.0", "3", "-1.5", "4", "-11.0"}) {
            auto* box = qobject_cast<EntryBox*>(several->focusWidget());
            ASSERT_NE(box, nullptr) << entry;
            box->selectAll();
            Put(several, entry);
        }
        EXPECT_EQ(FromQt(Find<QLabel>(several, "lblResult")->text()),
                  "20.07 ppm, 19.50 to 20.66 (95 %, t 2.03, 35 degrees of freedom)");
        EXPECT_EQ(FromQt(Find<QLabel>(several, "lblResidual(2)")->text()), "-0.20");
        prompts.ExpectAsk("The additions are in no file and in no table. Would you like to leave them?", false);
        Key(several, Qt::Key_Escape);
        EXPECT_TRUE(several->isVisible());
        EXPECT_EQ(context.unsaved.Collect().back().extension, ".additions");
        OnModal([](Screen* number) { Put(number, "Lake"); });
        Choose(several, "mnuASaveRow");
        EXPECT_EQ(several->StatusText(), "A row has been added to the data table.");
        Key(several, Qt::Key_Escape);
    });
    Choose(screen, "mnuOption(3)");
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmAdditions));
    EXPECT_EQ(dataTable.RowText(1), " 1\tLake\t09:05\t\t\t50\t10\t1000\t5.26E-2\t44.6\t-11\t20.07\t1.06E-3");
    EXPECT_EQ(dataTable.Facts(1).Get(fact::Low), "19.50");
    EXPECT_EQ(Text(screen, "txtbox(14)"), "") << "the boxes of the method stay as they were";
}

}  // namespace
}  // namespace kelvo::test
