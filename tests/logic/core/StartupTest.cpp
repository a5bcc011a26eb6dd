#include "core/Startup.h"

#include "app/AppState.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

constexpr DisplaySize Large{12000, 9000};

AppState Loaded(const std::string& settings) {
    const ScratchFolder folder;
    folder.Put("KELVO.ini", settings);
    AppState state;
    LoadState(state, Large, folder.Path());
    return state;
}

std::string Numbers(const AppState& s) {
    return Joined(s.PortIndex, s.HardwarePort, s.IonIndex, s.DateFormat, s.ASD, s.ASDavg, s.Waittime, s.Threshold,
                  s.Preset, s.NetworkPrinter);
}
std::string Texts(const AppState& s) {
    return Joined(s.Operator, s.RefElectrode, s.ElectrodeNum, s.ISAB, s.Temperature, s.CaliTemp, s.FileOperator,
                  s.FileRefElectrode, s.FileElectrodeNum);
}

TEST(Startup, WithoutSettingsFile) {
    const ScratchFolder folder;
    AppState state;
    state.PortIndex = 7;
    state.ReadAvg = 5;
    const std::string& path = folder.Path();
    LoadState(state, Large, path.substr(0, path.size() - 1));
    EXPECT_EQ(Joined(state.AppPath, state.DataPath, state.HelpPath, state.ListPath, state.IniPath),
              Joined(path, path, path, path, path + "KELVO.ini"));
    EXPECT_EQ(Numbers(state), "0|1|0|0|1|10|5|0|30|0");
    EXPECT_EQ(Texts(state), "|,|,,|None|,,|||,|,,");
    EXPECT_EQ(Joined(state.ActiveCount, state.ReadAvg), "0|1") << "an earlier state is forgotten";
    EXPECT_TRUE(folder.Names().empty()) << "reading settings writes none";
}

TEST(Startup, EveryKeyHasItsField) {
    const AppState state = Loaded(
        "[Setting]\r\nOperator=wrong section\r\n[hareware]\r\nPortSetting= 2\r\nIonIndex=10\r\nDateFormat=1\r\n"
        "Operator=Ann\r\nRefType=Ag/AgCl\r\nRefNum=R7\r\nISENum=I8\r\nph1Num=P1\r\npH2Num=P2\r\nISAB=TISAB\r\n"
        "ASD= 2\r\nASDavg= 20\r\nWaittime=6\r\nthreshold= 0.25\r\nPreset= 45\r\nNetworkPrinter= 1\r\nChannel0=0\r\n"
        "Channel1=1\r\nChannel2=0\r\nChannel3=1\r\nChannel4=1\r\nTemperature1=24.5\r\nTemperature2=21\r\n");
    EXPECT_EQ(Numbers(state), "2|3|10|1|2|20|6|0.25|45|1");
    EXPECT_EQ(Texts(state), "Ann|Ag/AgCl,R7|I8,P1,P2|TISAB|,24.5,21|24.5|Ann|Ag/AgCl,R7|I8,P1,P2");
    EXPECT_EQ(Joined(state.Channel, state.InputActive, state.ActiveCount), "0,1,0,1,1|1,0,1,1|3");
}

TEST(Startup, HandEditedNumbersAndTheCustomIon) {
    // Port index and number, ion, date, ASD, average, wait, threshold, preset, printer.
    const char* const numbers[][2] = {
        {"ASD=0\r\nPreset=0\r\nWaittime=0\r\nASDavg=0", "0|1|0|0|1|10|5|0|30|0"},
        {"ASD=-1\r\nASDavg=15 readings", "0|1|0|0|-1|15|5|0|30|0"},
        {"ASD=two\r\nASDavg=40000\r\nthreshold=1E99", "0|1|0|0|1|10|5|0|30|0"},
        {"threshold=0\r\nPreset=12", "0|1|0|0|1|10|5|0|12|0"},
        {"IonIndex=65535", "0|1|-1|0|1|10|5|0|30|0"},
        {"IonIndex=26", "0|1|-1|0|1|10|5|0|30|0"},
        {"PortSetting=32767", "32767|1|0|0|1|10|5|0|30|0"},
    };
    for (const auto& [lines, expected] : numbers)
        EXPECT_EQ(Numbers(Loaded(std::string("[Hareware]\r\n") + lines)), expected) << lines;
    const auto ion = [](const std::string& lines) {
        const IonTable table = Loaded("[Hareware]\r\n" + lines).Ions;
        return Joined(table.names[25], table.weights[25]);
    };
    EXPECT_EQ(ion("IonIndex=25\r\nCustomIon=Mg\r\nCustomWeight= 24.305"), "Mg|24.305");
    EXPECT_EQ(ion("IonIndex=24\r\nCustomIon=Mg\r\nCustomWeight= 24.305"), "Custom|100");
    EXPECT_EQ(ion("IonIndex=25\r\nCustomWeight=1E99"), "Custom|100");
}

TEST(Startup, OnlyOneDisplayIsSmall) {
    AppState s;
    const auto geometry = [&s](const DisplaySize& display) {
        LoadState(s, display, "/nonexistent");
        return Joined(s.ScreenWidth, s.ScreenHeight, s.ScreenScaleX, s.ScreenScaleY, s.FormScale);
    };
    for (const DisplaySize& display : {DisplaySize{9600, 7201}, {9601, 7200}, {0, 0}})
        EXPECT_EQ(geometry(display), "12000|9000|0.95|1.2|0.82");
    EXPECT_EQ(geometry({9600, 7200}), "9600|7200|0.98|1|1");
}

TEST(Startup, InputsFollowTheChannels) {
    AppState state;  // one for all: nothing of before may stay
    const auto inputs = [&state](const std::array<std::int16_t, 5>& channel) {
        state.Channel = channel;
        DeriveInputs(state);
        return Joined(state.InputActive, state.ActiveCount);
    };
    EXPECT_EQ(inputs({1, 1, 1, 0, 1}), "1,1,0,1|3");
    EXPECT_EQ(inputs({1, 0, 2, 1, 0}), "1,0,1,0|2");
}

}  // namespace
}  // namespace kelvo::test
