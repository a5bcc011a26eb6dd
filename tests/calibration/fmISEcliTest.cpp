#include "calibration/CaliSession.h"
#include "support/Stage.h"

namespace kelvo::test {
namespace {

/// The calibration screen with a fluoride calibration: −58 mV per decade, −54 mV at 1000 ppm.
class IseScreen : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        state.Channel[1] = 1;
        state.IonIndex = 10;
        state.PointTemp = state.CaliTemp = "25";
    }

    /// As the setup leaves it. Points are mV and LogC in order of entry.
    Screen* Entered(std::vector<std::pair<float, float>> points, bool save, const char* name = "a.ise") {
        state.CaliDirty = 1;
        state.MvScaleIndex = 2;
        state.LogCScaleIndex = 1;
        CaliSession session(state, prompts);
        session.DrawEmpty();
        session.StartPoints(static_cast<int>(points.size()));
        for (std::size_t i = 0; i < points.size(); ++i)
            session.StorePoint(static_cast<int>(i) + 1, points[i].first, 10, 1e-3, points[i].second);
        session.AfterLastPoint();
        prompts.ExpectAsk("Would you like to save the calibration", save);
        if (save) files.Expect(Path(name));
        desk.Show(ScreenCode::fmISEcli);
        return Shown(ScreenCode::fmISEcli);
    }
    Screen* Rising(bool save = true) { return Entered({{-54, -1.279f}, {4, -2.279f}, {62, -3.279f}}, save); }

    void StartSamples(Screen* main) {
        prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
        Choose(main, "mnuPotentiometry(0)");
    }
    static bool Visible(Screen* screen, const char* action) { return Find<QAction>(screen, action)->isVisible(); }
};

TEST_F(IseScreen, WhatEachStateOffers) {
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    for (const char* hidden : {"mnuFile(2)", "mnuFile(4)", "mnuS", "mnupoten", "mnuOption", "mnuLog"})
        EXPECT_FALSE(Visible(main, hidden)) << hidden;
    EXPECT_TRUE(Find<QLabel>(main, "lblmsg")->isVisible());
    EXPECT_FALSE(Find<QListWidget>(main, "lstCli")->isVisible());
    desk.Close(ScreenCode::fmISEcli);

    main = Rising();
    for (const char* shown : {"mnuFile(2)", "mnuFile(4)", "mnuS", "mnupoten", "mnuOption", "mnuRecording"})
        EXPECT_TRUE(Visible(main, shown)) << shown;
    EXPECT_FALSE(Find<QAction>(main, "mnuQsave")->isEnabled());
    for (const char* hidden : {"txtslope(1)", "txtslope(2)", "txtslope(3)"})
        EXPECT_FALSE(Box(main, hidden)->isVisible()) << hidden;
    EXPECT_TRUE(Box(main, "txtslope(0)")->isVisible());
    StartSamples(main);
    EXPECT_TRUE(Find<QAction>(main, "mnuQsave")->isEnabled());
}

TEST_F(IseScreen, DecliningToSaveDropsTheCalibration) {
    Screen* main = Rising(false);
    EXPECT_EQ(state.CaliDirty, 0);
    EXPECT_EQ(state.CaliPoints, 0);
    EXPECT_EQ(state.LinearFit, 0);
    EXPECT_TRUE(state.Graph.Empty());
    EXPECT_TRUE(Find<QLabel>(main, "lblmsg")->isVisible());
}

TEST_F(IseScreen, ACancelledSaveKeepsTheCalibrationAndIsNotAskedAgain) {
    prompts.ExpectAsk("Would you like to save the calibration", true);
    files.Expect(std::nullopt);
    state.CaliDirty = 1;
    CaliSession session(state, prompts);
    session.DrawEmpty();
    session.StartPoints(2);
    session.StorePoint(1, 0, 1, 0.1, -1);
    session.StorePoint(2, 58, 0.1, 0.01, -2);
    session.AfterLastPoint();
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    EXPECT_EQ(state.CaliPoints, 2);
    EXPECT_NE(main->RemarkText().find("has not been saved"), std::string::npos);
    Choose(main, "mnumain");
    Shown(ScreenCode::frmenu);
}

TEST_F(IseScreen, AFailedSaveIsAskedAgainOnTheWayOut) {
    std::filesystem::create_directory(folder / "F.ISE");
    prompts.ExpectAsk("Would you like to save the calibration", true);
    files.Expect(Path("f.ise"));
    prompts.ExpectMessage("Error75Saving" + Path("F.ISE") + ":Path/File access error.");
    state.CaliDirty = 1;
    CaliSession session(state, prompts);
    session.DrawEmpty();
    session.StartPoints(2);
    session.StorePoint(1, 0, 1, 0.1, -1);
    session.StorePoint(2, 58, 0.1, 0.01, -2);
    session.AfterLastPoint();
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    EXPECT_EQ(state.CaliPoints, 2);
    prompts.ExpectAsk("Would you like to save the calibration", true);
    files.Expect(Path("g.ise"));
    Choose(main, "mnumain");
    EXPECT_NE(Content("G.ISE").find("58\r\n"), std::string::npos);
}

TEST_F(IseScreen, FallingPotentialsStayPairedAcrossAndTheStatusBarSaysSo) {
    Screen* main = Entered({{120, -4.279f}, {62, -3.279f}, {4, -2.279f}, {-54, -1.279f}}, true);
    EXPECT_EQ(Text(main, "txtslope(0)"), "58.00");
    EXPECT_FALSE(main->RemarkText().empty());
    Choose(main, "mnuRefresh");
    EXPECT_FALSE(main->RemarkText().empty()) << "the line lasts";
    desk.Close(ScreenCode::fmISEcli);
    EXPECT_TRUE(Entered({{-54, -1.279f}, {4, -2.279f}}, true, "b.ise")->RemarkText().empty());
}

TEST_F(IseScreen, TheRemarkOnFallingPotentialsOutlastsSamplesAndOtherRemarks) {
    Screen* main = Entered({{62, -3.279f}, {4, -2.279f}, {-54, -1.279f}}, true);
    const std::string lasting = main->RemarkText();
    StartSamples(main);
    Put(main, "30");
    EXPECT_EQ(main->RemarkText(), lasting);
    Put(main, "300");
    EXPECT_GT(main->RemarkText().size(), lasting.size()) << "the extrapolation is told behind it";
    EXPECT_TRUE(main->RemarkText().starts_with(lasting));
    Keys(main, "x");
    Settle();
    EXPECT_TRUE(main->RemarkText().starts_with(lasting));
}

TEST_F(IseScreen, NoWayOutLosesACalibrationThatCouldNotBeSaved) {
    std::filesystem::create_directory(folder / "F.ISE");
    const auto failedSave = [&] {
        prompts.ExpectAsk("Would you like to save the calibration", true);
        files.Expect(Path("f.ise"));
        prompts.ExpectMessage("Error75Saving" + Path("F.ISE") + ":Path/File access error.");
    };
    failedSave();
    state.CaliDirty = 1;
    CaliSession session(state, prompts);
    session.DrawEmpty();
    session.StartPoints(2);
    session.StorePoint(1, 0, 1, 0.1, -1);
    session.StorePoint(2, 58, 0.1, 0.01, -2);
    session.AfterLastPoint();
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    for (const char* way : {"mnumain", "mnuFile(3)", "mnuFile(0)", "mnuOpen(0)", "mnuFile(5)"}) {
        if (std::string(way) == "mnuFile(5)") prompts.ExpectAsk("Are you sure you want to exit?", true);
        failedSave();
        Choose(main, way);
        EXPECT_TRUE(main->isVisible()) << way;
        EXPECT_EQ(state.CaliPoints, 2) << way;
        EXPECT_FALSE(desk.Ended()) << way;
    }
    prompts.ExpectAsk("Would you like to save the calibration", false);
    Choose(main, "mnumain");
    Shown(ScreenCode::frmenu);
}

TEST_F(IseScreen, TheOpeningMessageComesBackWhole) {
    Screen* main = Rising();
    files.Expect(Path("a.ise"));
    Choose(main, "mnuOpen(0)");
    files.Expect(std::nullopt);
    Choose(main, "mnuOpen(0)");
    auto* message = Find<QLabel>(main, "lblmsg");
    EXPECT_EQ(state.CaliPoints, 0) << "a cancelled open leaves the opening state";
    EXPECT_TRUE(message->isVisible());
    EXPECT_GE(message->height(), message->heightForWidth(message->width())) << "nothing is cut off";
    EXPECT_GT(message->width(), 330);
    EXPECT_FALSE(Find<QListWidget>(main, "lstCli")->isVisible());
    EXPECT_EQ(S(main->windowTitle()), "Kelvo");
    Key(main, Qt::Key_Escape);
    EXPECT_FALSE(message->isVisible());
    Key(main, Qt::Key_Escape);
    EXPECT_TRUE(message->isVisible()) << "the keyboard brings it back";
}

TEST_F(IseScreen, ForeignAndDamagedFilesLeaveTheOpeningState) {
    const auto write = [&](const char* name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    };
    write("SHORT.ISE", "2\r\n1\r\n10\r\n4\r\n-1\r\n");
    write("NOISE.ISE", std::string(5000, '\x01'));
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    struct Row {
        const char* name;
        std::string message;
    };
    for (const Row& row : std::vector<Row>{
             {"short.ise", "Error62Opening" + Path("SHORT.ISE") + ":Input past end of file."},
             {"gone.ise", "File" + Path("GONE.ISE") + "Not Found."},
         }) {
        files.Expect(Path(row.name));
        prompts.ExpectMessage(row.message);
        Choose(main, "mnuOpen(0)");
        EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
        EXPECT_EQ(state.CaliPoints, 0) << row.name;
        EXPECT_EQ(state.IonIndex, 10) << row.name;
        EXPECT_FALSE(Visible(main, "mnupoten")) << row.name;
    }
}

TEST_F(IseScreen, AFolderThatVanishesLosesNoRow) {
    Screen* main = Rising();
    std::filesystem::create_directory(folder / "stick");
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", true);
    files.Expect(Path("stick/run"));
    Choose(main, "mnuPotentiometry(0)");
    Put(main, "30");
    std::filesystem::remove_all(folder / "stick");
    prompts.ExpectMessage("Error76Saving" + Path("stick/RUN.TAB") + ":Path not found.");
    Put(main, "31.5");
    EXPECT_EQ(dataTable.Rows(), 4);
    prompts.ExpectMessage("Error76Saving" + Path("stick/RUN.TAB") + ":Path not found.");
    prompts.ExpectAsk("Would you like to save the data table?", true);
    files.Expect(Path("kept"));
    Choose(main, "mnumain");
    EXPECT_NE(Content("KEPT.tab").find("\t31.5\t"), std::string::npos);
}

TEST_F(IseScreen, RefusedSamplesLeaveBoxesAndTableAlone) {
    Screen* main = Rising();
    StartSamples(main);
    Put(main, "30");
    ASSERT_EQ(dataTable.Rows(), 3);
    const auto before = Text(main, "txtT(3)");
    struct Row {
        const char* typed;
        const char* message;
    };
    for (const Row& row : std::vector<Row>{
             {"1000.5", "Input data out of range(±1000 mV), please re-typy again."},
             {"-1000.1", "Input data out of range(±1000 mV), please re-typy again."},
         }) {
        prompts.ExpectMessage(row.message);
        Put(main, row.typed);
        EXPECT_EQ(Text(main, "txtT(0)"), row.typed);
        EXPECT_EQ(Text(main, "txtT(3)"), before);
        EXPECT_EQ(Focus(main), "txtT(0)");
    }
    Box(main, "txtT(0)")->SetText(QString());
    Enter(main);
    EXPECT_EQ(dataTable.Rows(), 3) << "an empty box is no sample of 0 mV";
    for (const char* box : {"txtT(4)", "txtT(5)"}) {
        Box(main, box)->setFocus();
        Enter(main);
    }
    EXPECT_EQ(dataTable.Rows(), 3);
    Box(main, "txtT(0)")->setFocus();
    Put(main, "1000");
    EXPECT_EQ(dataTable.Rows(), 4) << "1000 mV itself is in range";
}

TEST_F(IseScreen, OneSampleMoreThanTheGraphHolds) {
    Screen* main = Rising();
    StartSamples(main);
    for (int i = 0; i < 101; ++i)
        Put(main, "30");
    EXPECT_EQ(state.SampleCount, 101);
    EXPECT_EQ(dataTable.Rows(), 103);
    prompts.ExpectMessage("Data out of range, please try again.");
    Put(main, "40");
    EXPECT_EQ(state.SampleCount, 101);
    EXPECT_EQ(dataTable.Rows(), 103);
    EXPECT_EQ(Text(main, "txtT(0)"), "40");
    EXPECT_FALSE(main->RemarkText().empty());
    OnModal([](Screen* number) { Put(number, "over"); });
    Choose(main, "mnuQsave");
    EXPECT_EQ(dataTable.Rows(), 104) << "Quick Save still takes the boxes as they stand";
    Choose(main, "mnuRefresh");
    Put(main, "40");
    EXPECT_EQ(state.SampleCount, 1);
}

TEST_F(IseScreen, SlopeOfZeroNeitherDrawsNorEnds) {
    state.MvScaleIndex = 2;
    Screen* main = Entered({{600, -1}, {600, -2}}, true);
    EXPECT_EQ(Text(main, "txtslope(0)"), "0.00");
    StartSamples(main);
    prompts.ExpectMessage("Data out of range, please try again.");
    Put(main, "30");
    EXPECT_EQ(dataTable.Rows(), 2);
    EXPECT_TRUE(main->isVisible());
}

TEST_F(IseScreen, ChangingTheCurveKeepsWhatWasMeasured) {
    Screen* main = Rising();
    Choose(main, "mnuNonLinear");
    StartSamples(main);
    Put(main, "30");
    Choose(main, "mnuLinear");
    EXPECT_EQ(state.TableOpen, 0);
    EXPECT_NE(Content("KEPT.TAB").find("\t30\t"), std::string::npos);
    EXPECT_NE(main->RemarkText().find("KEPT.TAB"), std::string::npos);
}

TEST_F(IseScreen, ExitAnsweredNoLosesNothing) {
    Screen* main = Rising();
    StartSamples(main);
    Put(main, "30");
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Choose(main, "mnuFile(5)");
    EXPECT_TRUE(prompts.lastDefaultNo);
    EXPECT_EQ(dataTable.Rows(), 3);
    EXPECT_FALSE(desk.Ended());

    prompts.ExpectAsk("Are you sure you want to exit?", true);
    prompts.ExpectAsk("Would you like to save to data table?", false);
    Choose(main, "mnuFile(5)");
    EXPECT_TRUE(desk.Ended());
}

TEST_F(IseScreen, AFileNamedBeforehandIsWrittenRowByRow) {
    Screen* main = Rising();
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", true);
    files.Expect(Path("run"));
    Choose(main, "mnuPotentiometry(0)");
    EXPECT_EQ(state.TableFile, Path("RUN.TAB"));
    Put(main, "30");
    EXPECT_NE(Content("RUN.TAB").find("\t30\t"), std::string::npos);
    Put(main, "31.5");
    EXPECT_NE(Content("RUN.TAB").find("\t31.5\t"), std::string::npos);
    prompts.ExpectMessage("Your data have been saved: " + Path("RUN.TAB"));
    Choose(main, "mnuFile(3)");
    Shown(ScreenCode::frmenu);
}

TEST_F(IseScreen, TheMessageIsDraggedInsideAndClickedAway) {
    desk.Show(ScreenCode::fmISEcli);
    Screen* main = Shown(ScreenCode::fmISEcli);
    auto* message = Find<QLabel>(main, "lblmsg");
    const auto drag = [&](QPoint by) {
        const QPoint grip(5, 5);
        QTest::mousePress(message, Qt::LeftButton, {}, grip);
        QMouseEvent move(QEvent::MouseMove, grip + by, message->mapToGlobal(grip + by), Qt::LeftButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(message, &move);
        QTest::mouseRelease(message, Qt::LeftButton, {}, grip);
    };
    drag({-5000, -5000});
    EXPECT_EQ(message->pos(), QPoint(0, 0));
    drag({5000, 5000});
    const QSize room = message->parentWidget()->size();
    EXPECT_EQ(message->geometry().right(), room.width() - 1);
    EXPECT_EQ(message->geometry().bottom(), room.height() - 1);
    EXPECT_TRUE(message->isVisible());
    QTest::mouseClick(message, Qt::LeftButton);
    EXPECT_FALSE(message->isVisible());
    QTest::mouseClick(main->findChild<QWidget*>("picGraph"), Qt::LeftButton);
    EXPECT_TRUE(message->isVisible());
}

}  // namespace
}  // namespace kelvo::test
