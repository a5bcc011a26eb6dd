#include "ph/PhCalibrationFile.h"

#include <gtest/gtest.h>

#include "app/AppState.h"
#include "core/Settings.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using std::string_literals::operator""s;

TEST(PhCalibrationFile, SavesComesBackAndOutlivesDamagedFiles) {
    const std::string text =
        "\"24/11/2026 09:05\"\r\n\" 25\"\r\n\"p1\"\r\n\" 2\"\r\n\"x, y\"\r\n\"-0.5\"\r\n\"p2\"\r\n\" 0\"\r\n"
        "\" 4\"\r\n\" 177.5\"\r\n\" 7.01\"\r\n\" 0\"\r\n";
    const ScratchFolder folder;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    AppState state;
    state.AppPath = state.DataPath = folder.Path();
    state.IniPath = folder / "KELVO.ini";
    state.ElectrodeNum = {"E1", "p1", "p2"};
    state.PhCaliDate = {"", "24/11/2026 09:05", "x, y"};
    state.PhCaliTemp = {0, 25, -0.5f};
    state.PhCaliElectrode = {"", "p1", "p2"};
    state.BufferCount = {0, 2, 0};
    state.Buffers1 = {{}, {0, 4, 177.5f}, {0, 7.01f, 0}};
    const std::string name = folder / "PH.CLI";
    files.Expect(folder / "ph");
    ASSERT_TRUE(SavePhCalibration(state, prompts, files));
    EXPECT_EQ(folder.Get("PH.CLI"), text);
    files.Expect(folder / "gone/x");
    EXPECT_FALSE(SavePhCalibration(state, prompts, files) || state.StatusMessage.empty());
    EXPECT_EQ(ReadSetting("Latest Calibration Value", "LastCaliFile", state.IniPath), name);

    AppState read;
    read.IniPath = state.IniPath;
    read.Buffers2 = {{}, {0, 9, 9}};
    EXPECT_EQ(LoadLastPhCalibration(read, prompts, files), OpenOutcome::Opened);
    EXPECT_EQ(read.Buffers1, state.Buffers1);
    EXPECT_EQ(Joined(read.Buffers2.size(), read.BufferCount, read.PhCaliDate, read.PhCaliTemp, read.FileElectrodeNum,
                     read.PhCaliElectrode),
              "2|0,2,0|,24/11/2026 09:05,x, y|0,25,-0.5|,p1,p2|,p1,p2")
        << "an absent block is left alone";
    const std::pair<std::string, int> damaged[] = {{text.substr(0, text.size() - 6), 62},
                                                   {"\"\"\n\"25\"\n\"\"\n\" 5\"\n" + text, 9},
                                                   {"\"\"\n\"25\"\n\"\"\n\"-1\"\n" + text, 9},
                                                   {"\"\"\n\"1E39\"\n\"\"\n\" 2\"\n" + text, 6}};
    for (const auto& [bytes, code] : damaged) {
        folder.Put("PH.CLI", bytes);
        prompts.ExpectMessage("Error" + std::to_string(code) + "Opening" + name + ":" +
                              RuntimeError(static_cast<ErrorNumber>(code)).what() + ".");
        EXPECT_EQ(LoadLastPhCalibration(state, prompts, files), OpenOutcome::Failed);
        EXPECT_EQ(PhBytes(state), text) << "the calibration in use is untouched";
    }
}

TEST(PhCalibrationFile, TheLastOneIsPreferredToTheDefault) {
    const ScratchFolder app, data;
    app.Put("DEFAULT.CLI", "");
    data.Put("last.cli", "");
    const std::string section = "[Latest Calibration Value]\r\nDefaultFile=DEFAULT.CLI\r\nLastCaliFile=";
    const auto resolved = [&](const std::string& bytes) {
        return ResolvePhCalibration(app.Put("KELVO.ini", bytes), app.Path());
    };
    EXPECT_EQ(resolved(section + (data / "LAST.CLI")), data / "last.cli");
    for (const std::string& last : {data / "GONE.CLI", data.Path(), ""s})
        EXPECT_EQ(resolved(section + last), app / "DEFAULT.CLI") << last;
    EXPECT_EQ(resolved(""), app.Path());
}

}  // namespace
}  // namespace kelvo::test
