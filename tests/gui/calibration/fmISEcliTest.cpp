#include <cmath>

#include "calibration/CaliSession.h"
#include "calibration/CurveFit.h"
#include "calibration/QualityPresenter.h"
#include "link/SampleReadingPresenter.h"
#include "support/Joined.h"
#include "support/ScreenFixture.h"
#include "tables/ReportedResult.h"
#include "tables/RowUncertainty.h"

namespace kelvo::test {
namespace {

/// The calibration screen with a fluoride calibration: −58 mV per decade, −54 mV at 1000 ppm.
class IseScreen : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        state.Channel[1] = 1;
        state.IonIndex = 10;
        state.PointTemp = state.CaliTemp = "25";
    }
    using Points = std::vector<std::pair<float, float>>;  ///< mV, LogC
    inline static const Points Three = {{-54, -1.279f}, {4, -2.279f}, {62, -3.279f}};
    /// ±0.3 mV about −58 mV a decade from a rising entry, so that the pairs stand.
    inline static const Points Four = {{-11.7f, -2}, {45.7f, -3}, {103.7f, -4}, {162.3f, -5}};

    Screen* Entered(const Points& points = Three) {
        state.CaliDirty = 1;
        state.MvScaleIndex = 2;
        state.LogCScaleIndex = 1;
        CaliSession session(state, prompts);
        session.DrawEmpty();
        session.StartPoints(static_cast<int>(points.size()));
        for (int i = 1; const auto& [e, logC] : points)
            session.StorePoint(i++, e, 18998.4 * std::pow(10.0, logC), std::pow(10.0, logC), logC);
        session.AfterLastPoint();
        screens.Show(ScreenCode::fmISEcli);
        return Shown(ScreenCode::fmISEcli);
    }
    void AnswerSave(bool save) { prompts.ExpectAskToSave("Would you like to save the calibration", save); }
    void SaveAs(const std::string& name) {
        AnswerSave(true);
        files.Expect(Path(name));
    }
    Screen* Saved(const Points& points = Three) {
        SaveAs("a.ise");
        return Entered(points);
    }
    /// A save of the calibration into a folder of that name.
    void FailSave() {
        std::filesystem::create_directory(folder / "F.ISE");
        SaveAs("f.ise");
        prompts.ExpectMessage("Error75Saving" + Path("F.ISE") + ":Path/File access error.");
    }
    void StartSamples(Screen* main) {
        prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
        Choose(main, "mnuPotentiometry(0)");
    }
    static bool Visible(Screen* screen, const char* action) { return Find<QAction>(screen, action)->isVisible(); }
};

TEST_F(IseScreen, GrowsUntilNothingIsScrolledButNotAgainstTheAnalyst) {
    state.FormScale = 0.4f;  // of the display's 800 px: less than the boxes need
    Screen* main = Saved(Four);
    EXPECT_EQ(main->StatusText(), "The calibration has been saved to A.ISE.");
    StartSamples(main);
    main->SetStatus("A remark of " + std::string(60, 'x') + " and of " + std::string(60, 'y') + " takes two lines.");
    ProcessEvents();
    EXPECT_EQ(Find<QScrollArea>(main, "body")->verticalScrollBar()->maximum(), 0);
    main->resize(700, 400);
    main->SetStatus({});
    ProcessEvents();
    EXPECT_EQ(main->height(), 400);
}

TEST_F(IseScreen, ADeclinedSaveDropsTheCalibrationAndACancelledOneKeepsIt) {
    AnswerSave(false);
    Screen* main = Entered();
    EXPECT_TRUE(state.CaliDirty == 0 && state.CaliPoints == 0 && state.LinearFit == 0 && state.Graph.Empty());
    EXPECT_FALSE(Visible(main, "mnupoten"));
    screens.Close(ScreenCode::fmISEcli);
    AnswerSave(true);
    files.Expect(std::nullopt);
    main = Entered();
    EXPECT_TRUE(Visible(main, "mnupoten"));
    EXPECT_EQ(state.CaliPoints, 3);
    EXPECT_NE(main->StatusText().find("has not been saved"), std::string::npos);
    Choose(main, "mnumain");  // asks no second time
    Shown(ScreenCode::frmenu);
}

TEST_F(IseScreen, NoWayOutLosesACalibrationThatCouldNotBeSaved) {
    FailSave();
    Screen* main = Entered();
    for (const char* way : {"mnumain", "mnuFile(3)", "mnuFile(0)", "mnuOpen(0)", "mnuFile(5)"}) {
        if (std::string(way) == "mnuFile(5)") prompts.ExpectAsk("Are you sure you want to exit?", true);
        FailSave();
        Choose(main, way);
        EXPECT_TRUE(main->isVisible() && state.CaliPoints == 3 && !screens.Ended()) << way;
    }
    SaveAs("g.ise");
    Choose(main, "mnumain");
    EXPECT_NE(Content("G.ISE").find("62\r\n"), std::string::npos);
}

TEST_F(IseScreen, ASampleHasItsIntervalBelowTheBoxesUntilTheNextOne) {
    Screen* main = Saved(Four);
    StartSamples(main);
    EXPECT_EQ(Box(main, "txtT(0)")->grab().toImage().pixelColor(12, 8), QColor(0xff, 0xff, 0x80)) << "next to fill";
    auto* interval = Find<QLabel>(main, "lblInterval");
    EXPECT_FALSE(interval->isVisible());
    Put(main, "30");
    EXPECT_EQ(FromQt(interval->text()), "35.9 ppm, 32.9 to 39.0 (95 %)");
    EXPECT_EQ(interval->toolTip(), "The interval holds: scatter of 4 standards and of 1 reading");
    EXPECT_TRUE(interval->isVisible());
    prompts.ExpectMessage("Input data out of range(±1000 mV), please re-typy again.");
    Put(main, "1001");
    EXPECT_TRUE(interval->text().contains("32.9 to 39.0")) << "it belongs to what the boxes hold";
    auto* client = dynamic_cast<ReadingClient*>(main);
    auto* live = Find<QLabel>(main, "lblLive");
    client->ShowLive(30.0f);
    EXPECT_TRUE(live->text().startsWith("Live: 35.9 ppm, 32.9 to 39.0 (95 %)")) << FromQt(live->text());
    client->ShowLive(std::nullopt);
    EXPECT_FALSE(live->isVisible()) << "nothing stale stays";
    state.TableOpen = 0;
}

TEST_F(IseScreen, TheQualityWindowStandsBesideTheScreenAndFollowsIt) {
    Screen* main = Saved(Four);
    Choose(main, "mnuQuality");
    Screen* quality = Shown(ScreenCode::frmQuality);
    auto* word = Find<QLabel>(quality, "lblVerdict");
    EXPECT_EQ(word->text(), "good");
    state.CaliE[1] = -50;
    Choose(main, "mnuRefresh");
    EXPECT_EQ(word->text(), "doubtful");
    Choose(main, "mnumain");
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmQuality)) << "it goes with its screen";
}

TEST_F(IseScreen, AClosingTableDoesNotTakeAnUnsavedCalibrationWithIt) {
    FailSave();
    Screen* main = Entered();
    StartSamples(main);
    Put(main, "30");
    prompts.ExpectAskToSave("Would you like to save the data table?", false);
    Choose(main, "mnuNonLinear");
    SaveAs("g.ise");
    Choose(main, "mnumain");
    EXPECT_NE(Content("G.ISE").find("62\r\n"), std::string::npos);
}

TEST_F(IseScreen, FallingPotentialsStayPairedAcrossAndTheStatusBarSaysSo) {
    Screen* main = Saved({{120, -4.279f}, {62, -3.279f}, {4, -2.279f}, {-54, -1.279f}});
    EXPECT_EQ(Text(main, "txtslope(0)"), "58.00") << "the stored result stays";
    StartSamples(main);
    Put(main, "30");
    main->SetStatus("Something else.");
    for (const char* lasts : {"potentials fell", "Calibration doubtful: the slope has the sign of a cation's"})
        EXPECT_NE(main->StatusText().find(lasts), std::string::npos) << main->StatusText();
}

TEST_F(IseScreen, AStandardIsAskedForAgainAndSaysWhichSamplesItCovers) {
    Screen* main = Saved(Four);
    OnModal([](Screen* dialog) {
        const char* const typed[] = {"2", "30", "1", "", "3"};
        for (int i = 0; i < 5; ++i)
            Find<EntryBox>(dialog, QStringLiteral("txtDrift(%1)").arg(i))->SetText(std::string(typed[i]));
        Find<EntryBox>(dialog, "txtDrift(0)")->SetText(std::string("2.5"));
        Click(dialog, "cmdDrift(0)");
        EXPECT_EQ(dialog->StatusText(), "The number of samples is a whole number from 0 to 100000, with a point.");
        Find<EntryBox>(dialog, "txtDrift(0)")->SetText(std::string("2"));
        Find<QCheckBox>(dialog, "chkBracket")->setChecked(true);
        Click(dialog, "cmdDrift(0)");
    });
    Choose(main, "mnuDrift");
    StartSamples(main);
    const std::string ask =
        " been measured since the last good check. Would you like to measure the standard of 1.90 ppm now?";
    const auto measure = [&](const char* mv, int seconds) {
        clock.Pass(seconds);
        Put(main, mv);
    };
    measure("30", 0);
    prompts.ExpectAsk("2 samples have" + ask, false);
    measure("60", 60);
    prompts.ExpectAsk("3 samples have" + ask, true);
    measure("80", 60);
    EXPECT_EQ(FromQt(Find<QLabel>(main, "lblNext")->text()), "Next: the standard of 1.90 ppm, to check the drift");
    EXPECT_EQ(dynamic_cast<ReadingClient*>(main)->ReadingPrompt(),
              "Please immerse the electrode in the standard of 1.90 ppm,");
    Choose(main, "mnuQsave");
    EXPECT_EQ(main->StatusText(), "Measure the standard of 1.90 ppm first; no check has been added.")
        << "the box holds the sample's 80 mV";
    measure("104.3", 120);
    EXPECT_EQ(main->StatusText(), "Drift check with 1.90 ppm: +0.60 mV, -2.4 %, within 1 mV.");
    EXPECT_EQ(FromQt(Find<QLabel>(main, "lblNext")->text()), "");
    // At 0, 60 and 120 s of 240 s: 0, 0.15 and 0.3 mV too much.
    const auto fact = [&](int row, const char* name) { return table.Working().Facts(row).Get(name); };
    EXPECT_EQ(Joined(fact(1, fact::Corrected), fact(2, fact::Corrected), fact(3, fact::Correction)),
              "30.000|59.850|-0.30 mV between the calibration and 09:09");
    EXPECT_EQ(table.Working().Cell(4, 1), "Standard 1.90 ppm");

    measure("50", 60);
    prompts.ExpectAsk("1 sample has" + ask, true);
    clock.Pass(1739);
    Choose(main, "mnuDriftNow");
    EXPECT_TRUE(Find<QAction>(main, "mnuDriftNow")->isChecked());
    Choose(main, "mnuDriftNow");
    EXPECT_FALSE(Find<QAction>(main, "mnuDriftNow")->isChecked()) << "a sample after all";
    table.DropRow();
    measure("50", 1);
    measure("105.5", 60);
    EXPECT_EQ(main->StatusText(),
              "Drift check with 1.90 ppm: +1.80 mV, -6.9 %, BEYOND 1 mV. The samples since the last good check (1) are "
              "not covered. Calibrate again.");
    EXPECT_EQ(fact(5, fact::Uncovered), "drift of +1.80 mV found at 09:40");
    prompts.ExpectAsk("2 samples have" + ask, false);
    measure("40", 60);
    EXPECT_EQ(fact(7, fact::Uncovered), fact(5, fact::Uncovered)) << "none has been good since";
    EXPECT_EQ(TextBeside(table.Working(), 5).substr(0, 45), "NOT COVERED: drift of +1.80 mV found at 09:40");

    const auto results = ResultsOf(table.Working());
    ASSERT_EQ(results.size(), 5u) << "a check is no sample";
    // 10^((59.85 + 128)/-58) mol/L of F.
    EXPECT_NEAR(results[1].measured, 18998.4 * std::pow(10.0, -187.85 / 58), 0.002);
    EXPECT_EQ(results[1].budget.Parts().at(4).source, "of the correction, 0.15 mV");
    EXPECT_EQ(results[1].words, "row 2 drift corrected by -0.15 mV between the calibration and 09:09");
    EXPECT_EQ(results[3].words.substr(0, 24), "row 5 NOT COVERED: drift");
    Choose(main, "mnuDriftNow");
    table.DropRow();
    measure("110", 60);
    EXPECT_EQ(Joined(fact(7, fact::CheckDrift), fact(7, fact::Uncovered)), "+6.30|") << "not what the lost sample was";
    state.TableOpen = 0;
}

TEST_F(IseScreen, AStandardIsLeftOutWithAReasonAndComesBackWithItsFile) {
    // Of 10 mV more than the line has; the others keep to it within 0.3 mV.
    Points five = Four;
    five.insert(five.begin() + 2, {78.0f, -3.5f});
    Screen* main = Saved(five);
    EXPECT_NEAR(state.CaliSlope, -58.0, 0.9);
    const std::string whole = Content("A.ISE");
    OnModal([&](Screen* dialog) {
        auto* list = Find<QTableWidget>(dialog, "grdStandards");
        list->setCurrentCell(2, 0);
        prompts.ExpectInput("Leave Out", std::nullopt);
        Click(dialog, "cmdLeaveOut");
        EXPECT_EQ(list->item(2, 4)->text(), "") << "no reason, no change";
        prompts.ExpectInput("Leave Out", "air bubble");
        Click(dialog, "cmdLeaveOut");
        EXPECT_EQ(FromQt(list->item(2, 0)->text() + list->item(2, 4)->text() + list->item(3, 0)->text()),
                  "-air bubble3");
        const char* const told[] = {"1,5", "A12", "2026-01-31", "249.8 250.9 250.2 250.4"};
        for (int i = 0; i < 4; ++i)
            Find<EntryBox>(dialog, QStringLiteral("txtTold(%1)").arg(i))->SetText(std::string(told[i]));
        Click(dialog, "cmdStandards(0)");
        EXPECT_EQ(dialog->StatusText(), "The uncertainty of the standards is a number from 0 to 100 %, with a point.");
        Find<EntryBox>(dialog, "txtTold(0)")->SetText(std::string("1.5"));
        Click(dialog, "cmdStandards(0)");
    });
    Choose(main, "mnuStandards");
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmStandards));
    EXPECT_EQ(Joined(state.CaliPoints, SlopeText(state)), "4|-58.00");
    EXPECT_EQ(main->StatusText(),
              "1 of 5 standards is left out (Option, Standards). The standards expired 2026-01-31.");
    EXPECT_EQ(Content("A.ISE"), whole) << "nothing is deleted";
    // b of 10^(-378.325/58) mol/L, times 10^(3·0.4573/58) − 1, in ppm of F.
    const std::string page = QualityText(MakeQualityPage(CalibrationOf(state), false));
    EXPECT_NE(page.find("Detection limit, 3s\t3.2E-4 ppm\t1.8E-4 to 1.29E-3 ppm (95 %), 4 blanks, s 0.46 mV\n"),
              std::string::npos)
        << page;
    EXPECT_NE(
        page.find("Standards\t4 of 5 count\tuncertain by 1.5 % (standard deviation); lot A12, expires 2026-01-31"),
        std::string::npos)
        << page;

    files.Expect(Path("A.ISE"));
    Choose(main, "mnuOpen(0)");
    EXPECT_EQ(Joined(state.CaliPoints, SlopeText(state), state.LeftOut.at(0).reason, state.Told.lot),
              "4|-58.00|air bubble|A12");
}

}  // namespace
}  // namespace kelvo::test
