#include "app/CrashRecovery.h"

#include "app/AppState.h"
#include "calibration/CaliFile.h"
#include "core/Clock.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

using End = CrashRecovery::End;

class CrashRecoveryTest : public ScreenFixture {
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
    void HoldRows() {
        state.TableOpen = 1;
        state.TableFile = "-999";
        table.AddRow(" 1\t\t09:05\t30\t35.60\t1.87E-3\t25\t77.0\t7.5");
    }
    /// The folder of the program, and another one.
    std::vector<std::string> Folders() const { return {folder.string() + "/", Path("second/")}; }
};

TEST_F(CrashRecoveryTest, WhatIsNotSavedIsKeptAndToldOnce) {
    const std::pair<End, const char*> ends[] = {
        {End::Failure, "The program ended by a failure the last time. What was not saved has been kept in:"},
        {End::Session,
         "The session was closed the last time before everything was saved. What was not saved has been kept in:"}};
    HoldCalibration(2);
    HoldRows();
    for (const auto& [end, heading] : ends) {
        CrashRecovery recovery(context, Folders());
        const auto notes = context.unsaved.Add([] {
            return std::vector<UnsavedPiece>{{"the notes", ".TXT", "pH 7\r\n", {}}};
        });
        recovery.Keep(end);
        const std::string name = "KEPT20261124-0905" + std::string(end == End::Failure ? "07" : "08");
        EXPECT_NE(Content(name + ".ISE").find("-54\r\n"), std::string::npos);
        EXPECT_NE(Content(name + ".TAB").find("\t09:05\t30\t35.60\t"), std::string::npos);
        EXPECT_EQ(Content(name + ".TXT"), "pH 7\r\n");
        EXPECT_EQ(state.TableFile, "-999") << "the session may go on";
        CrashRecovery next(context, Folders());
        prompts.ExpectMessage(std::string(heading) + "\n\n" + Path(name + ".ISE") + "\n" + Path(name + ".TAB") + "\n" +
                              Path(name + ".TXT"));
        next.Report();
        EXPECT_TRUE(prompts.Done());
        next.Report();
        clock.Pass(1);
    }
}

TEST_F(CrashRecoveryTest, AnEntryInProgressKeepsThePointsThatAreIn) {
    HoldCalibration(3);
    state.CurrentPoint = 3;
    state.PhCaliUnsaved = true;
    screens.Load(ScreenCode::fmpaidat);
    CrashRecovery(context, Folders()).Keep(End::Failure);
    const std::string kept = Content("KEPT20261124-090507.ISE");
    AppState read;
    ASSERT_FALSE(kept.empty());
    ReadIse(read, kept);
    EXPECT_EQ(read.CaliPoints, 2);
    EXPECT_EQ(read.CaliE[2], 4);
    EXPECT_NE(Content("KEPT20261124-090507.CLI"), "") << "the pH calibration in use";
}

TEST_F(CrashRecoveryTest, AFailureKeepsEverythingBeforeItIsReportedAndEndsTheProgram) {
    HoldRows();
    CrashRecovery recovery(context, Folders());
    prompts.ExpectMessage("Run-time error '13':\n\nType mismatch");
    int code = 0;
    QObject::connect(&screens, &ScreenManager::ProgramEnded, &screens, [&code](int ended) { code = ended; });
    recovery.EndByFailure("Run-time error '13':\n\nType mismatch");
    EXPECT_EQ(code, 1);
    EXPECT_NE(Content("KEPT20261124-090507.TAB").find("35.60"), std::string::npos);
}

TEST_F(CrashRecoveryTest, WithNoFolderLeftTheAnalystMayMakeRoomAndTryAgain) {
    HoldCalibration(2);
    state.CaliDirty = 0;
    CrashRecovery recovery(context, {"/dev/null/a/", "/dev/null/b/"});
    recovery.Keep(End::Session);
    state.CaliDirty = 1;
    recovery.KeepInSilence(End::Session);
    const char* const question =
        "The program ends, and no folder takes what is not saved:\nthe calibration\n\nTried:\n/dev/null/a/: Path not "
        "found\n/dev/null/b/: Path not found\n\nMake room in one of them. Try again? With No it is lost.";
    prompts.ExpectAskToSave(question, true);
    prompts.ExpectAskToSave(question, false);
    recovery.Keep(End::Session);
    EXPECT_TRUE(prompts.Done());
}

TEST_F(CrashRecoveryTest, TheBoxesOfAnAdditionAndItsRowsAreKept) {
    state.IonIndex = 10;
    screens.Show(ScreenCode::frmSampa);
    Screen* screen = Shown(ScreenCode::frmSampa);
    CrashRecovery recovery(context, Folders());
    recovery.Keep(End::Session);
    EXPECT_FALSE(std::filesystem::exists(folder / "KEPT.TXT")) << "an empty form is no work";
    Box(screen, "txtbox(0)")->setFocus();
    Put(screen, "5");
    state.TableFile = "-999";
    table.AddRow(" 1\t\t09:05\t25\t 77\t5\t50.00\t5\t2.63E-4\t120\t100\t71.67\t3.77E-3");
    recovery.Keep(End::Session);
    EXPECT_EQ(Content("KEPT20261124-090507.SMP").substr(0, 18), " 10\r\n 285\r\n\r\n5\r\n\r\n");
    EXPECT_NE(Content("KEPT20261124-090507.SMT").find("\t71.67\t"), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
