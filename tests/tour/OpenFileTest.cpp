// The program started with a file: a double click on it, or `kelvo FILE`.
#include "addition/MethodFile.h"
#include "app/AppState.h"
#include "app/CommandLine.h"
#include "app/OpenFile.h"
#include "calibration/CaliFile.h"
#include "calibration/CaliTestPoints.h"
#include "core/FileKinds.h"
#include "support/Joined.h"
#include "support/ScreenFixture.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

class OpenFileTest : public ScreenFixture {
 protected:
    void Put(const std::string& name, const std::string& bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
    }
    bool Open(const std::string& name) {
        const bool opened = OpenFileInScreen(context, Path(name), [this](std::optional<std::string> next) {
            if (next) files.Expect(std::move(next));
        });
        ProcessEvents();
        return opened;
    }
    /// Names of the windows in sight.
    std::string Windows() const {
        std::string names;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && qobject_cast<Screen*>(window) != nullptr)
                names += FromQt(window->objectName()) + " ";
        return names;
    }
};

TEST_F(OpenFileTest, ACalibrationIsTakenForItsOwnIonAndBackLeadsToItsMenu) {
    AppState calcium = FluorideState();
    calcium.IonIndex = 3;
    Put("CA.ise", IseBytes(calcium, {}));
    ASSERT_TRUE(Open("CA.ise"));
    Screen* screen = Shown(ScreenCode::fmISEcli);
    EXPECT_EQ(Joined(state.IonIndex, state.CaliPoints, state.LinearFit), "3|4|1");
    EXPECT_EQ(Windows(), "fmISEcli ");
    Key(screen, Qt::Key_Escape);
    screens.Close(ScreenCode::fmISEcli);
    // One that cannot be read is told, and the ion of the hardware setup stands.
    Put("BAD.ISE", "1\r\n1\r\n99\r\n");
    state.IonIndex = Fluoride;
    prompts.ExpectMessage("Error9Opening" + Path("BAD.ISE") + ":Subscript out of range.");
    EXPECT_TRUE(Open("BAD.ISE"));
    EXPECT_EQ(state.IonIndex, Fluoride);
}

TEST_F(OpenFileTest, EveryKindOpensInItsScreen) {
    MethodDump dump;
    dump.Ion = Fluoride;
    dump.Box[0] = "50";
    const std::string samples = Golden("SAMPLES.TAB"), ph = Golden("RECORD.PHC"), boxes = MethodDumpBytes(dump);
    // name and bytes, the screen, whether the table screen shows the file in front; what the screen shows of it
    const std::tuple<const char*, std::string, ScreenCode, bool, const char*> rows[] = {
        {"T.TAB", samples, ScreenCode::fmISEcli, true, ""},
        {"A.SMT", samples, ScreenCode::frmSampa, true, ""},
        {"A.SDT", samples, ScreenCode::frmStanad01, true, ""},
        {"A.smp", boxes, ScreenCode::frmSampa, false, "50"},
        {"A.std", boxes, ScreenCode::frmStanad01, false, "50"},
        {"L.PHT", ph, ScreenCode::frmDsply, true, "0"},
        {"R.PHC", ph, ScreenCode::frmPHMe, false, "1|-1|2"},
        {"D.CLI", Content("DEFAULT.CLI"), ScreenCode::frmenu, false, "The pH calibration of D.CLI is in use."},
    };
    for (const auto& [name, bytes, code, inFront, shows] : rows) {
        SCOPED_TRACE(name);
        Put(name, bytes);
        ASSERT_TRUE(Open(name));
        EXPECT_EQ(FileKindOf(name)->screen, code);
        Screen* screen = screens.Find(code);
        ASSERT_NE(screen, nullptr);
        EXPECT_EQ(table.ShowsFile() && screens.IsShown(ScreenCode::frmQSave), inFront);
        EXPECT_TRUE(inFront || screen->isVisible());
        EXPECT_TRUE(!inFront || table.Shown().Rows() == 3) << table.Shown().Rows();
        const std::string shown =
            code == ScreenCode::frmPHMe    ? Joined(state.ViewOnly, state.pHMode, table.RowsLookedAt().size())
            : code == ScreenCode::frmenu   ? screen->StatusText()
            : code == ScreenCode::frmDsply ? Joined(Find<QPushButton>(screen, "cmdDsply(1)")->isEnabled())
            : inFront                      ? ""
                                           : Text(screen, "txtbox(0)");
        EXPECT_EQ(shown, shows);
        for (const ScreenCode done : {ScreenCode::frmQSave, code})
            screens.Close(done);
        table.Unload();
        ProcessEvents();
    }
}

TEST_F(OpenFileTest, WhatIsNoFileOfTheProgramIsToldAndNothingIsShown) {
    prompts.ExpectMessage("File" + Path("NONE.ISE") + "Not Found.");
    EXPECT_FALSE(Open("NONE.ISE"));
    prompts.ExpectMessage(Path("x.pdf") +
                          "\n\nKelvo opens files that end in .ISE, .CLI, .TAB, .PHT, .PHC, .SMT, .SDT, .SMP, .STD.");
    EXPECT_FALSE(Open("x.pdf"));
    EXPECT_EQ(Windows(), "");
}

TEST(ProgramCommandLine, IsTakenOrAnsweredBeforeThereIsADisplay) {
    const std::string here = std::filesystem::current_path().string() + "/";
    // the words, the exit code (-1: the program starts), the head of what is said or the file
    const std::tuple<std::vector<const char*>, int, std::string> rows[] = {
        {{}, -1, ""},
        {{"a b.ISE"}, -1, here + "a b.ISE"},
        {{"-platform", "offscreen", "/x/F.ISE", "-style=fusion"}, -1, "/x/F.ISE"},
        {{"--", "-odd.ISE"}, -1, here + "-odd.ISE"},
        {{"--help"}, 0, "kelvo: measure ions and pH"},
        {{"F.ISE", "--version"}, 0, "kelvo 1.2\n"},
        {{"--bogus"}, 2, "kelvo: there is no option --bogus\n"},
        {{"a.ISE", "b.ISE"}, 2, "kelvo: one file at a time"},
        {{""}, 2, "kelvo: the name of the file is empty"},
    };
    for (const auto& [words, code, expected] : rows) {
        const CommandLine line = ReadCommandLine(words, "1.2");
        const std::string said = code < 0 ? line.file : code == 0 ? line.out : line.err;
        EXPECT_EQ(line.exitCode.value_or(-1), code) << expected;
        EXPECT_EQ(said.substr(0, code < 0 ? std::string::npos : expected.size()), expected);
    }
}

}  // namespace
}  // namespace kelvo::test
