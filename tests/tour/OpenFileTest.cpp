// The program started with a file: a double click on it, or `kelvo FILE`.
#include "addition/MethodFile.h"
#include "app/CommandLine.h"
#include "app/OpenFile.h"
#include "calibration/CaliFile.h"
#include "calibration/CaliTestPoints.h"
#include "core/FileKinds.h"
#include "support/Joined.h"
#include "support/ScreenFixture.h"

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
    std::string Golden(const std::string& name) const {
        std::ifstream in(SourceDir() + "tests/logic/tables/golden/" + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
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
    const std::string ph =
        "Electrode 1 :\r\nCalibration date/time:\t1\r\nSerial No.\tPH-1\r\nBuffers:\tpH: 7, 4\r\nmV:0, 177(25\xB0"
        "C)\r\nElectrode 2 :\r\nCalibration date/time:\t\r\nSerial No.\t\r\nBuffers:\tpH: \r\nmV:\r\nOperator "
        "Name\tAnn\r\nExperiment Date:\t2\r\n\tNo.\r\n"
        " 1\t0\t09:05:07\t7.01\t-0.5\t25.0\t77.0\tN/A\tN/A\tN/A\tN/A\r\n"
        " 2\t1\t09:05:09\t7.02\t-0.6\t25.0\t77.0\tN/A\tN/A\tN/A\tN/A\r\n";
    struct Row {
        const char* name;
        std::string bytes;
        ScreenCode screen;
        bool table;       ///< the table screen shows it in front
        const char* box;  ///< a box of the screen that shows what the file holds
        const char* text;
    };
    const Row rows[] = {
        {"T.TAB", Golden("SAMPLES.TAB"), ScreenCode::fmISEcli, true, nullptr, nullptr},
        {"A.SMT", Golden("SAMPLES.TAB"), ScreenCode::frmSampa, true, nullptr, nullptr},
        {"A.SDT", Golden("SAMPLES.TAB"), ScreenCode::frmStanad01, true, nullptr, nullptr},
        {"A.smp", MethodDumpBytes(dump), ScreenCode::frmSampa, false, "txtbox(0)", "50"},
        {"A.std", MethodDumpBytes(dump), ScreenCode::frmStanad01, false, "txtbox(0)", "50"},
        {"L.PHT", ph, ScreenCode::frmDsply, true, nullptr, nullptr},
        {"R.PHC", ph, ScreenCode::frmPHMe, false, nullptr, nullptr},
        {"D.CLI", Content("DEFAULT.CLI"), ScreenCode::frmenu, false, nullptr, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Put(row.name, row.bytes);
        ASSERT_TRUE(Open(row.name));
        EXPECT_EQ(FileKindOf(row.name)->screen, row.screen);
        Screen* screen = screens.Find(row.screen);
        ASSERT_NE(screen, nullptr);
        EXPECT_EQ(table.ShowsFile() && screens.IsShown(ScreenCode::frmQSave), row.table);
        EXPECT_TRUE(row.table || screen->isVisible());
        EXPECT_TRUE(!row.table || table.Shown().Rows() == 3) << table.Shown().Rows();
        if (row.box != nullptr) {
            EXPECT_EQ(Text(screen, row.box), row.text);
        }
        if (row.screen == ScreenCode::frmPHMe) {
            EXPECT_EQ(Joined(state.ViewOnly, state.pHMode, table.RowsLookedAt().size()), "1|-1|2");
        }
        if (row.screen == ScreenCode::frmenu) {
            EXPECT_EQ(screen->StatusText(), "The pH calibration of D.CLI is in use.");
        }
        if (row.screen == ScreenCode::frmDsply) {
            EXPECT_FALSE(Find<QPushButton>(screen, "cmdDsply(1)")->isEnabled());
        }
        for (const ScreenCode code : {ScreenCode::frmQSave, row.screen})
            screens.Close(code);
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
    struct Row {
        std::vector<const char*> words;
        int code;          ///< -1: the program starts
        std::string said;  ///< head of what is said, or the file
    };
    const Row rows[] = {
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
    for (const Row& row : rows) {
        const CommandLine line = ReadCommandLine(row.words, "1.2");
        const std::string said = row.code < 0 ? line.file : row.code == 0 ? line.out : line.err;
        EXPECT_EQ(line.exitCode.value_or(-1), row.code) << row.said;
        EXPECT_EQ(said.substr(0, row.code < 0 ? std::string::npos : row.said.size()), row.said);
    }
}

}  // namespace
}  // namespace kelvo::test
