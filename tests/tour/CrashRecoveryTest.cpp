#include "app/CrashRecovery.h"

#include "calibration/CaliFile.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class KeptWork : public ScreenFixture {
 protected:
    void HoldCalibration(int points) {
        state.CaliDirty = 1;
        state.IonIndex = 10;
        state.CaliPoints = static_cast<std::int16_t>(points);
        state.CaliE = {0, -54, 4, 0};
        state.CaliLogC = {0, -1.279f, -2.279f, 0};
        state.CaliPpm = {0, 1000, 100, 0};
        state.CaliMolar = {0, 5.26e-2f, 5.26e-3f, 0};
    }
};

TEST_F(KeptWork, WhatIsNotSavedIsKeptAndToldOnce) {
    HoldCalibration(2);
    state.TableOpen = 1;
    state.TableFile = "-999";
    table.AddRow(" 1\t\t09:05\t30\t35.60\t1.87E-3\t25\t77.0\t7.5");
    KeepUnsavedWork(context);
    EXPECT_NE(Content("KEPT20261124-090507.ISE").find("-54\r\n"), std::string::npos);
    EXPECT_NE(Content("KEPT20261124-090507.TAB").find("\t09:05\t30\t35.60\t"), std::string::npos);
    prompts.ExpectMessage("The program ended by a failure the last time. What was not saved has been kept in:\n\n" +
                          Path("KEPT20261124-090507.ISE") + "\n" + Path("KEPT20261124-090507.TAB"));
    ReportKeptWork(context);
    EXPECT_TRUE(prompts.Done());
    ReportKeptWork(context);
}

TEST_F(KeptWork, AnEntryInProgressKeepsThePointsThatAreIn) {
    HoldCalibration(3);
    state.CurrentPoint = 3;
    screens.Load(ScreenCode::fmpaidat);
    KeepUnsavedWork(context);
    const std::string kept = Content("KEPT20261124-090507.ISE");
    AppState read;
    ASSERT_FALSE(kept.empty());
    ReadIse(read, kept);
    EXPECT_EQ(read.CaliPoints, 2);
    EXPECT_EQ(read.CaliE[2], 4);
}

TEST_F(KeptWork, NothingUnsavedAndAFolderThatTakesNoFileEndInSilence) {
    HoldCalibration(2);
    state.CaliDirty = 0;
    KeepUnsavedWork(context);
    EXPECT_FALSE(std::filesystem::exists(folder / "KEPT.TXT"));
    state.CaliDirty = 1;
    state.AppPath = "/dev/null/kelvo/";
    KeepUnsavedWork(context);
    ReportKeptWork(context);
}

TEST_F(KeptWork, TheBoxesOfAnAdditionAndItsRowsAreKept) {
    state.IonIndex = 10;
    screens.Show(ScreenCode::frmSampa);
    Screen* screen = Shown(ScreenCode::frmSampa);
    KeepUnsavedWork(context);
    EXPECT_FALSE(std::filesystem::exists(folder / "KEPT.TXT")) << "an empty form is no work";
    Box(screen, "txtbox(0)")->setFocus();
    Put(screen, "5");
    state.TableFile = "-999";
    table.AddRow(" 1\t\t09:05\t25\t 77\t5\t50.00\t5\t2.63E-4\t120\t100\t71.67\t3.77E-3");
    KeepUnsavedWork(context);
    EXPECT_EQ(Content("KEPT20261124-090507.SMP").substr(0, 18), " 10\r\n 285\r\n\r\n5\r\n\r\n");
    EXPECT_NE(Content("KEPT20261124-090507.SMT").find("\t71.67\t"), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
