#include "calibration/CaliFile.h"

#include <random>

#include "calibration/CaliTestPoints.h"
#include "core/Settings.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// An ".ISE" file with the given head and `lines` numbers behind it.
std::string IseText(const std::string& head, int lines) {
    std::string text = head;
    for (int i = 0; i < lines; ++i)
        text += std::to_string(i + 1) + "\r\n";
    return text;
}

const char* const Texts = "\"25.0\"\r\n\"24/11/2026 09:05\"\r\n\"Ann, B\"\r\n\"Ag/AgCl\"\r\n\"R1\"\r\n\"E1\"\r\n";

AppState InFolder(const ScratchFolder& folder) {
    AppState state = FluorideState();
    state.AppPath = state.DataPath = folder.Path();
    state.IniPath = folder / "KELVO.ini";
    return state;
}

TEST(CaliFile, IseRecordsInTheirOrder) {
    AppState state = FluorideState();
    SetPoints(state, {{-2, -61.5f, 100, 0.0015f}});
    state.CaliSlope = -58.25f;
    state.CaliTemp = "25.0";
    state.Operator = "Ann, B";
    state.RefElectrode = {"Ag/AgCl", "µ1"};
    state.ElectrodeNum[0] = "E1";
    EXPECT_EQ(IseBytes(state, {2026, 11, 24, 9, 5, 7}),
              "2\r\n1\r\n10\r\n1\r\n-2\r\n-61.5\r\n100\r\n0.0015\r\n\"25.0\"\r\n\"24/11/2026 09:05\"\r\n\"Ann, B\"\r\n"
              "\"Ag/AgCl\"\r\n\"\xB5"
              "1\"\r\n\"E1\"\r\n-58.25\r\n");
    state.DateFormat = 1;
    SetPoints(state, {{-2, 1}, {-3, 2}});
    const std::string two = IseBytes(state, {2026, 11, 24, 9, 5, 7});
    EXPECT_NE(two.find("\"11/24/2026 09:05\""), std::string::npos);
    EXPECT_TRUE(two.ends_with("\"E1\"\r\n")) << "the slope is stored for one point alone";
}

TEST(CaliFile, IseComesBackBitForBit) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> exponent(-30, 30), sign(-1, 1);
    const auto any = [&] { return sign(random) * std::pow(10.0f, exponent(random)); };
    for (int n = 1; n <= 10; ++n) {
        AppState state = FluorideState();
        SetPoints(state, {});
        for (int i = 0; i < n; ++i)
            for (auto* column : {&state.CaliE, &state.CaliLogC, &state.CaliPpm, &state.CaliMolar})
                column->push_back(any());
        state.CaliPoints = static_cast<std::int16_t>(n);
        state.CaliSlope = any();
        state.CaliTemp = "21.5";
        state.Operator = "O'Neil, \"Al\"";
        AppState read;
        ReadIse(read, IseBytes(state, {}));
        EXPECT_EQ(read.CaliPoints, n);
        EXPECT_TRUE(read.CaliE == state.CaliE && read.CaliLogC == state.CaliLogC) << n;
        EXPECT_TRUE(read.CaliPpm == state.CaliPpm && read.CaliMolar == state.CaliMolar) << n;
        EXPECT_EQ(read.CaliSlope, n == 1 ? state.CaliSlope : 0);
        EXPECT_EQ(read.FileTemp + read.FileOperator, state.CaliTemp + state.Operator);
        EXPECT_EQ(read.Operator + read.CaliTemp, "") << "current settings are not the file's to set";
    }
}

TEST(CaliFile, DamagedIseFilesAreRefusedWithTheStateAsItWas) {
    struct Case {
        const char* name;
        std::string bytes;
        int code;
    };
    const std::string two = "2\r\n1\r\n10\r\n2\r\n";
    const Case cases[] = {
        {"empty", "", 62},
        {"binary",
         std::string("\0\x7F"
                     "ELF\2\1\r\n\0\xFF\n\0\n",
                     14),
         62},
        {"foreign text", "Dear all,\r\nthe standards\r\nare in\r\nthe fridge.\r\nBye\r\n1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n",
         9},
        {"cut in the arrays", IseText(two, 5), 62},
        {"cut in the texts", IseText(two, 8) + "\"25.0\"\r\n\"x\"\r\n", 62},
        {"one point without its slope", IseText("2\r\n1\r\n10\r\n1\r\n", 4) + Texts, 62},
        {"30000 points", IseText("2\r\n1\r\n10\r\n30000\r\n", 8) + Texts, 9},
        {"11 points", IseText("2\r\n1\r\n10\r\n11\r\n", 44) + Texts, 9},
        {"-5 points", IseText("2\r\n1\r\n10\r\n-5\r\n", 8) + Texts, 9},
        {"a count beyond 16 bits", IseText("2\r\n1\r\n10\r\n1E9\r\n", 8) + Texts, 6},
        {"no such mV scale", IseText("6\r\n1\r\n10\r\n2\r\n", 8) + Texts, 9},
        {"no such LogC scale", IseText("2\r\n4\r\n10\r\n2\r\n", 8) + Texts, 9},
        {"no such ion", IseText("2\r\n1\r\n26\r\n2\r\n", 8) + Texts, 9},
        {"no ion", IseText("2\r\n1\r\n-1\r\n2\r\n", 8) + Texts, 9},
        {"a potential beyond 32 bits", two + "-1\r\n-2\r\n1E39\r\n2\r\n", 6},
    };
    for (const Case& c : cases) {
        const ScratchFolder folder;
        AppState state = InFolder(folder);
        state.CaliSlope = -57;
        state.FileTemp = "20";
        state.FileElectrodeNum[0] = "old";
        ScriptedPrompts prompts;
        ScriptedFiles files;
        files.Expect(folder.Put("run.ise", c.bytes));
        prompts.ExpectMessage("Error" + std::to_string(c.code) + "Opening" + (folder / "RUN.ISE") + ":" +
                              RuntimeError(static_cast<ErrorNumber>(c.code)).what() + ".");
        EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Failed) << c.name;
        EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
        EXPECT_EQ(state.CaliPoints, 0) << c.name;
        EXPECT_TRUE(state.IonIndex == Fluoride && state.MvScaleIndex == 2 && state.LogCScaleIndex == 1) << c.name;
        EXPECT_TRUE(state.CaliSlope == -57 && state.FileTemp == "20" && state.FileElectrodeNum[0] == "old") << c.name;
        EXPECT_TRUE(state.CaliE.size() == state.CaliLogC.size() && state.CaliE.size() == state.CaliPpm.size() &&
                    state.CaliE.size() == state.CaliMolar.size());
    }
    AppState state;
    EXPECT_EQ(CodeOf([&] { ReadIse(state, IseText(two, 5)); }), 62);
    EXPECT_EQ(state.CaliLogC, (std::vector<float>{0, 1, 2}));
    EXPECT_EQ(state.CaliE, (std::vector<float>{0, 3, 4})) << "arrays stand as far as they were read";
    EXPECT_EQ(state.CaliPpm, (std::vector<float>{0, 5, 0}));
}

TEST(CaliFile, OpenFindsNamesAndCancels) {
    const ScratchFolder folder;
    AppState state = InFolder(folder);
    state.ElectrodeNum[0] = "E1";
    state.RefElectrode = {"Ag/AgCl", "R1"};
    folder.Put("run.ise", IseText("0\n3\n10\n2\n", 8) + Texts);
    ScriptedPrompts prompts;
    ScriptedFiles files;
    files.Expect("Run.Ise");  // no folder: the program's own
    EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Opened);
    EXPECT_EQ(files.last.filter, "All Data(*.ise)|*.ise");
    EXPECT_EQ(state.FileOperator, "Ann, B");
    EXPECT_TRUE(state.MvScaleIndex == 0 && state.LogCScaleIndex == 3 && state.CaliMolar[2] == 8);

    files.Expect("none.ise");
    prompts.ExpectMessage("File" + (folder / "NONE.ISE") + "Not Found.");
    EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Missing);
    EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
    for (const auto& nothing : {std::optional<std::string>(), std::optional<std::string>("")}) {
        state.CaliPoints = 2;
        state.FileElectrodeNum[0] = "other";
        files.Expect(nothing);
        EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Cancelled);
        EXPECT_TRUE(state.CaliPoints == 0 && state.IonIndex == Fluoride && state.FileElectrodeNum[0] == "E1");
    }
}

TEST(CaliFile, OpenAsksUntilTheIonAgrees) {
    const ScratchFolder folder;
    folder.Put("F.ISE", IseText("0\r\n3\r\n10\r\n1\r\n", 4) + Texts + "-58\r\n");
    folder.Put("CL.ISE", IseText("0\r\n3\r\n5\r\n1\r\n", 4) + Texts + "-31\r\n");
    const std::string wrong =
        "You have opened a calibration file which is for the ion 'Cl', the setting in the Hardware Setup is for the "
        "ion 'F'. Please re-open a calibration file";
    ScriptedPrompts prompts;
    ScriptedFiles files;
    AppState state = InFolder(folder);
    files.Expect("cl.ise");
    prompts.ExpectMessage(wrong);
    files.Expect("cl.ise");
    prompts.ExpectMessage(wrong);
    files.Expect("f.ise");
    prompts.ExpectMessage(
        "The ion electrode or the reference electrode serial number is different from the hardware setup. Please use "
        "Option/View Data for more details");
    EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Opened);
    EXPECT_EQ(prompts.lastTitle, "Warning");
    EXPECT_TRUE(state.IonIndex == Fluoride && state.CaliSlope == -58);

    files.Expect("cl.ise");
    prompts.ExpectMessage(wrong);
    files.Expect(std::nullopt);
    EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Cancelled);
    EXPECT_TRUE(state.IonIndex == Fluoride && state.CaliPoints == 0);
    EXPECT_EQ(state.CaliSlope, -58) << "the slope of a rejected file is not kept";

    state.IonIndex = NoIon;
    state.ElectrodeNum[0] = "E1";
    state.RefElectrode = {"Ag/AgCl", "R1"};
    files.Expect("cl.ise");
    EXPECT_EQ(OpenIseChecked(state, prompts, files), OpenOutcome::Opened);
    EXPECT_EQ(state.IonIndex, 5);
}

TEST(CaliFile, SaveNamesAsksAndRemembers) {
    const ScratchFolder folder;
    folder.Put("old.ise", "old");
    AppState state = InFolder(folder);
    state.CaliSlope = -58;
    state.CaliTemp = "25.0";
    state.CaliDate = "today";
    state.Operator = "Ann";
    const std::string question = (folder / "OLD.ISE") + "   This file already exists, would you like to replace it?";
    ScriptedPrompts prompts;
    ScriptedFiles files;
    const FixedClock clock;
    files.Expect(folder / "old");
    prompts.ExpectAsk(question, false);
    files.Expect(folder / "new.cal");
    ASSERT_EQ(SaveIseCalibration(state, prompts, files, clock, ""), SaveOutcome::Saved);
    EXPECT_TRUE(prompts.lastDefaultNo);
    EXPECT_EQ(files.last.filter + files.last.initialName, "All Data(*.ISE)|*.ISE*.ISE");
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"NEW.CAL", "old.ise"}));
    EXPECT_EQ(folder.Get("old.ise"), "old");
    EXPECT_EQ(state.IonCali[Fluoride], (std::array<std::string, 4>{"-58", "25.0", "25.0", "24/11/2026 09:05"}));
    EXPECT_EQ(state.FileTemp + state.FileDate + state.FileOperator, "25.0todayAnn");

    prompts.ExpectAsk(question, true);
    ASSERT_EQ(SaveIseCalibration(state, prompts, files, clock, "old"), SaveOutcome::Saved);
    EXPECT_EQ(folder.Get("old.ise"), folder.Get("NEW.CAL"));
    for (const auto& nothing : {std::optional<std::string>(), std::optional<std::string>("")}) {
        files.Expect(nothing);
        EXPECT_EQ(SaveIseCalibration(state, prompts, files, clock, ""), SaveOutcome::Cancelled);
    }
    state.IonIndex = CustomIonRow;
    EXPECT_EQ(SaveIseCalibration(state, prompts, files, clock, "own"), SaveOutcome::Saved);
}

TEST(CaliFile, AFailedSaveChangesNothing) {
    const ScratchFolder folder;
    AppState state = InFolder(folder);
    state.CaliDirty = 1;
    state.FileTemp = "20";
    ScriptedPrompts prompts;
    ScriptedFiles files;
    const std::string name = folder / "gone/X.ISE";
    prompts.ExpectMessage("Error76Saving" + name + ":Path not found.");
    EXPECT_EQ(SaveIseCalibration(state, prompts, files, FixedClock(), name), SaveOutcome::Failed);
    EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
    state.Operator = "日";
    prompts.ExpectMessage("Error5Saving" + (folder / "X.ISE") + ":Invalid procedure call or argument.");
    EXPECT_EQ(SaveIseCalibration(state, prompts, files, FixedClock(), folder / "x"), SaveOutcome::Failed);
    EXPECT_TRUE(folder.Names().empty());
    EXPECT_TRUE(state.CaliDirty == 1 && state.FileTemp == "20" && state.IonCali[Fluoride][0].empty());
}

AppState PhState(const ScratchFolder& folder) {
    AppState state = InFolder(folder);
    state.PhCaliDate = {"", "24/11/2026 09:05", "x, y"};
    state.PhCaliTemp = {0, 25, -0.5f};
    state.ElectrodeNum = {"", "p1", "p2"};
    state.BufferCount = {0, 2, 0};
    state.Buffers1 = {{}, {0, 4, 177.5f}, {0, 7.01f, 0}};
    return state;
}

const char* const PhText =
    "\"24/11/2026 09:05\"\r\n\" 25\"\r\n\"p1\"\r\n\" 2\"\r\n\"x, y\"\r\n\"-0.5\"\r\n\"p2\"\r\n\" 0\"\r\n"
    "\" 4\"\r\n\" 177.5\"\r\n\" 7.01\"\r\n\" 0\"\r\n";

TEST(CaliFile, PhSavesAndComesBack) {
    const ScratchFolder folder;
    AppState state = PhState(folder);
    EXPECT_EQ(PhBytes(state), PhText);
    ScriptedPrompts prompts;
    ScriptedFiles files;
    files.Expect(folder / "ph");
    ASSERT_TRUE(SavePhCalibration(state, prompts, files));
    EXPECT_EQ(files.last.filter, "All Data(*.Cli)|*.Cli");
    EXPECT_EQ(folder.Get("PH.CLI"), PhText);
    EXPECT_EQ(ReadSetting("Latest Calibration Value", "LastCaliFile", state.IniPath), folder / "PH.CLI");

    AppState read = InFolder(folder);
    read.Buffers2 = {{}, {0, 9, 9}};
    EXPECT_EQ(LoadLastPhCalibration(read, prompts, files), OpenOutcome::Opened);
    EXPECT_EQ(read.Buffers1, state.Buffers1);
    EXPECT_EQ(read.Buffers2.size(), 2u) << "an absent block is left alone";
    EXPECT_TRUE(read.BufferCount == state.BufferCount && read.PhCaliDate == state.PhCaliDate &&
                read.PhCaliTemp == state.PhCaliTemp);
    EXPECT_EQ(read.FileElectrodeNum[2], "p2");

    files.Expect(folder / "gone/x");
    EXPECT_FALSE(SavePhCalibration(state, prompts, files));
    EXPECT_FALSE(state.Remark.empty());
    EXPECT_EQ(ReadSetting("Latest Calibration Value", "LastCaliFile", state.IniPath), folder / "PH.CLI");
}

TEST(CaliFile, PhDefaultAndDamagedFiles) {
    const ScratchFolder folder;
    AppState state = PhState(folder);
    ScriptedPrompts prompts;
    ScriptedFiles files;
    WriteSetting("Latest Calibration Value", "DefaultFile", "first.cli", state.IniPath);
    prompts.ExpectMessage("File" + (folder / "FIRST.CLI") + "Not Found.");
    EXPECT_EQ(LoadLastPhCalibration(state, prompts, files), OpenOutcome::Missing);

    const std::string good = PhText;
    const std::pair<std::string, int> damaged[] = {{"", 62},
                                                   {good.substr(0, good.size() - 6), 62},
                                                   {"\"\"\n\"25\"\n\"\"\n\" 5\"\n" + good, 9},
                                                   {"\"\"\n\"25\"\n\"\"\n\"-1\"\n" + good, 9},
                                                   {"\"\"\n\"1E39\"\n\"\"\n\" 2\"\n" + good, 6}};
    for (const auto& [bytes, code] : damaged) {
        folder.Put("first.cli", bytes);
        prompts.ExpectMessage("Error" + std::to_string(code) + "Opening" + (folder / "FIRST.CLI") + ":" +
                              RuntimeError(static_cast<ErrorNumber>(code)).what() + ".");
        EXPECT_EQ(LoadLastPhCalibration(state, prompts, files), OpenOutcome::Failed);
        EXPECT_EQ(PhBytes(state), PhText) << "the calibration in use is untouched";
    }
    files.Expect(std::nullopt);
    EXPECT_EQ(OpenPhCalibration(state, prompts, files, ""), OpenOutcome::Cancelled);
}

}  // namespace
}  // namespace kelvo::test
