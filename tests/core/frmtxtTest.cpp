#include "support/Stage.h"

namespace kelvo::test {
namespace {

using StartScreen = Stage;

TEST_F(StartScreen, ArrowsAndEnterReachEveryRoute) {
    struct Row {
        int downs;
        ScreenCode opens;
        int branch, pHMode;
    };
    for (const Row& row : std::vector<Row>{{0, ScreenCode::frmenu, 0, -1},
                                           {1, ScreenCode::frmenu, 1, 0},
                                           {2, ScreenCode::frmenu, 2, 0},
                                           {3, ScreenCode::frmHware, 2, 0}}) {
        desk.Show(ScreenCode::frmtxt);
        Screen* start = Shown(ScreenCode::frmtxt);
        Find<QPushButton>(start, "cmdMain(0)")->setFocus();
        for (int i = 0; i < row.downs; ++i)
            Key(start, Qt::Key_Down);
        Enter(start);
        Shown(row.opens);
        EXPECT_FALSE(start->isVisible()) << row.downs;
        EXPECT_EQ(state.MenuBranch, row.branch);
        EXPECT_EQ(state.pHMode, row.pHMode);
        desk.Close(row.opens);
    }
}

TEST_F(StartScreen, NothingLeavesTheProgramWithoutTheQuestion) {
    desk.Show(ScreenCode::frmtxt);
    Screen* start = Shown(ScreenCode::frmtxt);
    for (const bool byFrame : {false, true}) {
        prompts.ExpectAsk("Are you sure you want to exit?", false);
        byFrame ? static_cast<void>(start->close()) : Click(start, "cmdtxt");
        EXPECT_TRUE(prompts.lastDefaultNo);
        EXPECT_TRUE(Shown(ScreenCode::frmtxt)->isVisible());
        EXPECT_FALSE(desk.Ended());
    }
    Key(start, Qt::Key_Escape);
    Screen* opening = Shown(ScreenCode::frmNorvak);
    EXPECT_EQ(S(Find<QPushButton>(opening, "cmdOK")->text()), "Start");
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Key(opening, Qt::Key_Escape);
    Enter(opening);
    EXPECT_EQ(Focus(Shown(ScreenCode::frmtxt)), "cmdMain(1)");
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmNorvak));
}

TEST_F(StartScreen, AnImpatientDoubleClickDoesNotReachTheNextScreen) {
    desk.Show(ScreenCode::frmtxt);
    QTest::mouseClick(Find<QPushButton>(Shown(ScreenCode::frmtxt), "cmdMain(2)"), Qt::LeftButton);
    Screen* menu = Shown(ScreenCode::frmenu);
    auto* below = Find<QPushButton>(menu, "cmdSub(0)");
    const auto second = [&](QEvent::Type type) {
        QMouseEvent event(type, QPointF(5, 5), below->mapToGlobal(QPointF(5, 5)), Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(below, &event);
    };
    QSignalSpy pressed(below, &QPushButton::clicked);
    second(QEvent::MouseButtonDblClick);
    second(QEvent::MouseButtonRelease);
    EXPECT_EQ(pressed.count(), 0);
    EXPECT_TRUE(menu->isVisible());
    QTest::mouseClick(below, Qt::LeftButton);
    EXPECT_EQ(pressed.count(), 1) << "a click of its own counts";
}

TEST_F(StartScreen, EveryScreenFitsTheSmallestDisplay) {
    for (const ScreenCode code :
         {ScreenCode::frmNorvak, ScreenCode::frmtxt, ScreenCode::frmenu, ScreenCode::frmHware, ScreenCode::frmsetup,
          ScreenCode::fmISEcli, ScreenCode::frmknosp, ScreenCode::frmInput}) {
        state.Channel[1] = 1;
        desk.Show(code);
        Screen* screen = Shown(code);
        const QSize least = screen->minimumSizeHint();
        EXPECT_LE(least.width(), 1024) << S(screen->objectName());
        EXPECT_LE(least.height(), 690) << S(screen->objectName());
        desk.Close(code);
    }
}

}  // namespace
}  // namespace kelvo::test
