#include "calibration/CaliFile.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

const char* const Texts = "\"25.0\"\r\n\"24/11/2026 09:05\"\r\n\"Ann, B\"\r\n\"Ag/AgCl\"\r\n\"R1\"\r\n\"E1\"\r\n";

/// An ".ISE" file with the given head and `lines` numbers behind it.
std::string IseText(const std::string& head, int lines) {
    std::string text = head;
    for (int i = 0; i < lines; ++i)
        text += std::to_string(i + 1) + "\r\n";
    return text;
}

/// A fluoride calibration in a folder of its own, with the electrodes that `Texts` names.
struct Place {
    Place() {
        state.AppPath = state.DataPath = folder.Path();
        state.IniPath = folder / "KELVO.ini";
        state.RefElectrode = {"Ag/AgCl", "R1"};
        state.ElectrodeNum = {"E1", "p1", "p2"};
    }
    void ExpectError(int code, const char* action, const std::string& name) {
        prompts.ExpectMessage("Error" + std::to_string(code) + action + name + ":" +
                              RuntimeError(static_cast<ErrorNumber>(code)).what() + ".");
    }
    void ExpectOpen(const std::optional<std::string>& name, OpenOutcome outcome) {
        files.Expect(name);
        EXPECT_EQ(OpenIseChecked(state, prompts, files), outcome) << name.value_or("cancelled");
    }
    SaveOutcome Save(const std::string& name = "") {
        return SaveIseCalibration(state, prompts, files, FixedClock(), name);
    }
    ScratchFolder folder;
    AppState state = FluorideState();
    ScriptedPrompts prompts;
    ScriptedFiles files;
};

TEST(CaliFile, IseRecordsInTheirOrderAndBack) {
    AppState state = FluorideState();
    SetPoints(state, {{-2, -61.5f, 100, 0.0015f}});
    state.CaliSlope = -58.25f;
    state.CaliTemp = "25.0";
    state.Operator = "Ann, B";
    state.RefElectrode = {"Ag/AgCl", "µ1"};
    state.ElectrodeNum[0] = "E1";
    const std::string one = IseBytes(state, FixedClock().Now());
    EXPECT_EQ(one,
              "2\r\n1\r\n10\r\n1\r\n-2\r\n-61.5\r\n100\r\n0.0015\r\n\"25.0\"\r\n\"24/11/2026 09:05\"\r\n\"Ann, B\"\r\n"
              "\"Ag/AgCl\"\r\n\"\xB5"
              "1\"\r\n\"E1\"\r\n-58.25\r\n");
    AppState read;
    ReadIse(read, one);
    EXPECT_EQ(Joined(read.MvScaleIndex, read.LogCScaleIndex, read.IonIndex, read.CaliLogC, read.CaliE, read.CaliPpm,
                     read.CaliMolar, read.FileTemp, read.FileDate, read.FileOperator, read.FileRefElectrode,
                     read.FileElectrodeNum[0], read.CaliSlope),
              "2|1|10|0,-2|0,-61.5|0,100|0,0.0015|25.0|24/11/2026 09:05|Ann, B|Ag/AgCl,µ1|E1|-58.25");
    EXPECT_EQ(read.Operator + read.CaliTemp, "") << "current settings are not the file's to set";

    state.DateFormat = 1;
    SetPoints(state, {{0.1f, -3.4028235e38f, 1.1754944e-38f, 16777215}, {-4.2790003f, 1e-30f, 3.3333333f, 0}});
    const std::string two = IseBytes(state, FixedClock().Now());
    EXPECT_TRUE(two.ends_with("\"E1\"\r\n")) << "the slope is stored for one point alone";
    EXPECT_NE(two.find("\"11/24/2026 09:05\""), std::string::npos);
    ReadIse(read, two);
    EXPECT_TRUE(read.CaliE == state.CaliE && read.CaliPpm == state.CaliPpm) << "bit for bit";
}

TEST(CaliFile, DamagedIseFilesAreRefusedWithTheStateAsItWas) {
    const std::string two = "2\r\n1\r\n10\r\n2\r\n";
    const std::tuple<const char*, std::string, int> rows[] = {
        {"binary", std::string("\0\x7F\r\n\0\xFF\n\0\n", 9), 62},
        {"foreign text", "Dear all,\r\nthe standards\r\nare in\r\nthe fridge.\r\nBye\r\n1\r\n2\r\n3\r\n4\r\n", 9},
        {"30000 points", IseText("2\r\n1\r\n10\r\n30000\r\n", 8) + Texts, 9},
        {"cut in the arrays", IseText(two, 5), 62},
        {"cut in the texts", IseText(two, 8) + "\"25.0\"\r\n\"x\"\r\n", 62},
        {"one point without its slope", IseText("2\r\n1\r\n10\r\n1\r\n", 4) + Texts, 62},
        {"11 points", IseText("2\r\n1\r\n10\r\n11\r\n", 44) + Texts, 9},
        {"no points", IseText("2\r\n1\r\n10\r\n0\r\n", 0) + Texts, 9},
        {"no such mV scale", IseText("6\r\n1\r\n10\r\n2\r\n", 8) + Texts, 9},
        {"no such LogC scale", IseText("2\r\n4\r\n10\r\n2\r\n", 8) + Texts, 9},
        {"no such ion", IseText("2\r\n1\r\n26\r\n2\r\n", 8) + Texts, 9},
        {"a potential beyond 32 bits", two + "-1\r\n-2\r\n1E39\r\n2\r\n", 6},
    };
    for (const auto& [name, bytes, code] : rows) {
        Place p;
        p.state.CaliSlope = -57;
        p.state.FileTemp = "20";
        p.state.FileElectrodeNum[0] = "old";
        p.ExpectError(code, "Opening", p.folder / "RUN.ISE");
        p.ExpectOpen(p.folder.Put("run.ise", bytes), OpenOutcome::Failed);
        const AppState& s = p.state;
        EXPECT_EQ(Joined(s.CaliPoints, s.IonIndex, s.MvScaleIndex, s.LogCScaleIndex, s.CaliSlope, s.FileTemp,
                         s.FileElectrodeNum[0]),
                  "0|10|2|1|-57|20|old")
            << name;
    }
}

TEST(CaliFile, OpenAsksUntilTheIonAgrees) {
    Place p;
    p.folder.Put("f.ise", IseText("0\n3\n10\n1\n", 4) + Texts + "-58\n");
    p.folder.Put("CL.ISE", IseText("0\r\n3\r\n5\r\n1\r\n", 4) + Texts + "-31\r\n");
    const std::string wrong =
        "You have opened a calibration file which is for the ion 'Cl', the setting in the Hardware Setup is for the "
        "ion 'F'. Please re-open a calibration file";
    p.state.ElectrodeNum[0] = "E2";
    p.files.Expect("cl.ise");  // no folder: the program's own
    p.prompts.ExpectMessage(wrong);
    p.prompts.ExpectMessage(
        "The ion electrode or the reference electrode serial number is different from the hardware setup. Please use "
        "Option/View Data for more details");
    p.ExpectOpen("F.Ise", OpenOutcome::Opened);
    EXPECT_EQ(Joined(p.prompts.lastTitle, p.state.IonIndex, p.state.CaliSlope, p.state.CaliMolar),
              "Warning|10|-58|0,4");
    p.prompts.ExpectMessage("File" + (p.folder / "NONE.ISE") + "Not Found.");
    p.ExpectOpen("none.ise", OpenOutcome::Missing);
    p.files.Expect("cl.ise");
    p.prompts.ExpectMessage(wrong);
    p.ExpectOpen(std::nullopt, OpenOutcome::Cancelled);
    EXPECT_EQ(Joined(p.state.IonIndex, p.state.CaliPoints, p.state.CaliSlope, p.state.FileElectrodeNum[0]),
              "10|0|-58|E2")
        << "nothing of the rejected file";
    p.state.IonIndex = NoIon;
    p.state.ElectrodeNum[0] = "E1";
    p.ExpectOpen("cl.ise", OpenOutcome::Opened);  // any ion when none was set
}

TEST(CaliFile, SaveNamesAsksAndRemembers) {
    Place p;
    p.folder.Put("old.ise", "old");
    p.state.CaliSlope = -58;
    p.state.CaliTemp = "25.0";
    p.state.CaliDate = "today";
    p.files.Expect(p.folder / "old");
    p.prompts.ExpectReplace(p.folder / "OLD.ISE", false);
    p.files.Expect(p.folder / "new.cal");
    ASSERT_EQ(p.Save(), SaveOutcome::Saved);
    EXPECT_TRUE(p.prompts.lastDefaultNo);
    EXPECT_EQ(Joined(p.folder.Names(), p.folder.Get("old.ise")), "NEW.CAL,old.ise|old");
    EXPECT_EQ(Joined(p.state.IonCali[Fluoride], p.state.FileTemp, p.state.FileDate),
              "-58,25.0,25.0,24/11/2026 09:05|25.0|today");
    p.prompts.ExpectReplace(p.folder / "OLD.ISE", true);
    ASSERT_EQ(p.Save("old"), SaveOutcome::Saved);
    EXPECT_EQ(p.folder.Get("old.ise"), p.folder.Get("NEW.CAL"));
}

TEST(CaliFile, AFailedSaveChangesNothing) {
    Place p;
    p.ExpectError(76, "Saving", p.folder / "gone/X.ISE");
    EXPECT_EQ(p.Save(p.folder / "gone/X.ISE"), SaveOutcome::Failed);
    p.state.Operator = "日";
    p.ExpectError(5, "Saving", p.folder / "X.ISE");
    EXPECT_EQ(p.Save("x"), SaveOutcome::Failed);
    EXPECT_EQ(Joined(p.folder.Names(), p.state.FileElectrodeNum, p.state.IonCali[Fluoride]), "|,,|,,,");
}

}  // namespace
}  // namespace kelvo::test
