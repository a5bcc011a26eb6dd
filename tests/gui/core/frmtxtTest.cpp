#include "app/FirstFrame.h"
#include "support/Joined.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

using StartScreen = ScreenFixture;

TEST_F(StartScreen, EveryRouteSetsItsBranch) {
    const char* const branchAndMode[] = {"0|-1", "1|0", "2|0", "2|0"};
    for (int route = 0; route < 4; ++route) {
        screens.Show(ScreenCode::frmtxt);
        Screen* start = Shown(ScreenCode::frmtxt);
        Click(start, QStringLiteral("cmdMain(%1)").arg(route));
        Screen* next = Shown(route == 3 ? ScreenCode::frmHware : ScreenCode::frmenu);
        EXPECT_FALSE(start->isVisible()) << route;
        EXPECT_EQ(Joined(state.MenuBranch, state.pHMode), branchAndMode[route]);
        screens.Close(next->Code());
    }
}

TEST_F(StartScreen, NothingLeavesTheProgramWithoutTheQuestion) {
    screens.Show(ScreenCode::frmtxt);
    Screen* start = Shown(ScreenCode::frmtxt);
    for (const bool byFrame : {false, true}) {
        prompts.ExpectAsk("Are you sure you want to exit?", false);
        byFrame ? static_cast<void>(start->close()) : Click(start, "cmdtxt");
        EXPECT_TRUE(prompts.lastDefaultNo);
        Shown(ScreenCode::frmtxt);
    }
    Key(start, Qt::Key_Escape);
    Screen* opening = Shown(ScreenCode::frmNorvak);
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Key(opening, Qt::Key_Escape);
    Enter(opening);
    EXPECT_EQ(Focus(Shown(ScreenCode::frmtxt)), "cmdMain(1)");
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmNorvak));
}

TEST_F(StartScreen, WhatTheFirstFrameDoesWithoutComesRightAfterItAndBeforeAnythingElse) {
    for (const std::string by : {"frame", "key", "other screen"}) {
        int done = 0;
        const FirstFrame first(*qApp, [&] { ++done; });
        screens.Load(ScreenCode::frmNorvak).Present();
        if (by == "frame") ProcessEvents();
        if (by == "key") QTest::sendKeyEvent(QTest::Press, screens.Find(ScreenCode::frmNorvak), Qt::Key_Shift, {}, {});
        if (by == "other screen") screens.Show(ScreenCode::frmtxt);
        EXPECT_EQ(done, 1) << by;
        screens.Close(ScreenCode::frmNorvak);
        ProcessEvents();
        EXPECT_EQ(done, 1) << by;
    }
}

TEST_F(StartScreen, AnImpatientDoubleClickDoesNotReachTheNextScreen) {
    screens.Show(ScreenCode::frmtxt);
    QTest::mouseClick(Find<QPushButton>(Shown(ScreenCode::frmtxt), "cmdMain(2)"), Qt::LeftButton);
    Screen* menu = Shown(ScreenCode::frmenu);
    auto* below = Find<QPushButton>(menu, "cmdSub(0)");
    QSignalSpy pressed(below, &QPushButton::clicked);
    for (const auto type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, QPointF(5, 5), below->mapToGlobal(QPointF(5, 5)), Qt::LeftButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(below, &event);
    }
    EXPECT_EQ(pressed.count(), 0);
    QTest::mouseClick(below, Qt::LeftButton);
    EXPECT_EQ(pressed.count(), 1) << "a click of its own counts";
}

}  // namespace
}  // namespace kelvo::test
