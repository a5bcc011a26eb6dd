#include "core/Startup.h"

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
    state.CaliDirty = 1;
    state.TableFile = "-999";
    state.ReadAvg = 5;
    const std::string& path = folder.Path();
    LoadState(state, Large, path.substr(0, path.size() - 1));
    EXPECT_EQ(Joined(state.AppPath, state.DataPath, state.HelpPath, state.ListPath, state.IniPath),
              Joined(path, path, path, path, path + "KELVO.ini"));
    EXPECT_EQ(Numbers(state), "0|1|0|0|1|10|5|0|30|0");
    EXPECT_EQ(Texts(state), "|,|,,|None|,,|||,|,,");
    EXPECT_EQ(Joined(state.ActiveCount, state.NorvakCaption), "0|Start");
    EXPECT_EQ(Joined(state.CaliDirty, state.TableFile, state.ReadAvg), "0||1") << "an earlier state is forgotten";
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

TEST(Startup, NumbersOfAHandEditedFile) {
    struct Row {
        const char* name;
        const char* lines;
        const char* numbers;  ///< port index and number, ion, date, ASD, average, wait, threshold, preset, printer
    };
    const Row rows[] = {
        {"0 is no mode", "ASD=0", "0|1|0|0|1|10|5|0|30|0"},
        {"a setup without stability watch", "ASD=-1", "0|1|0|0|-1|10|5|0|30|0"},
        {"no number", "ASD=two", "0|1|0|0|1|10|5|0|30|0"},
        {"numeric head", "ASDavg=15 readings", "0|1|0|0|1|15|5|0|30|0"},
        {"beyond 16 bits", "ASDavg=40000", "0|1|0|0|1|10|5|0|30|0"},
        {"zeros", "Preset=0\r\nWaittime=0\r\nASDavg=0", "0|1|0|0|1|10|5|0|30|0"},
        {"a threshold of 0 leaves the preset alone", "threshold=0\r\nPreset=12", "0|1|0|0|1|10|5|0|12|0"},
        {"beyond 32 bits", "threshold=1E99", "0|1|0|0|1|10|5|0|30|0"},
        {"no ion chosen", "IonIndex=-1", "0|1|-1|0|1|10|5|0|30|0"},
        {"no such row", "IonIndex=26", "0|1|-1|0|1|10|5|0|30|0"},
        {"no such row below", "IonIndex=-2", "0|1|-1|0|1|10|5|0|30|0"},
        {"last row", "IonIndex=25", "0|1|25|0|1|10|5|0|30|0"},
        {"port beyond all", "PortSetting=32767", "32767|1|0|0|1|10|5|0|30|0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Numbers(Loaded(std::string("[Hareware]\r\n") + row.lines)), row.numbers) << row.name;
}

TEST(Startup, CustomIonOnlyWhenSelected) {
    const char* const rows[][2] = {
        {"IonIndex=25\r\nCustomIon=Mg\r\nCustomWeight= 24.305", "Mg|24.305"},
        {"IonIndex=24\r\nCustomIon=Mg\r\nCustomWeight= 24.305", "Custom|100"},
        {"IonIndex=25", "Custom|100"},
        {"IonIndex=25\r\nCustomIon=Mg\r\nCustomWeight=1E99", "Mg|100"},
    };
    for (const auto& [lines, ion] : rows) {
        const AppState state = Loaded(std::string("[Hareware]\r\n") + lines);
        EXPECT_EQ(Joined(state.Ions.names[25], state.Ions.weights[25]), ion) << lines;
    }
}

TEST(Startup, OnlyOneDisplayIsSmall) {
    const DisplaySize displays[] = {{9600, 7200}, {9600, 7201}, {9601, 7200}, {7200, 9600}, {28800, 16200}, {0, 0}};
    const ScratchFolder folder;
    AppState state;
    for (const DisplaySize& display : displays) {
        LoadState(state, display, folder.Path());
        EXPECT_EQ(
            Joined(state.ScreenWidth, state.ScreenHeight, state.ScreenScaleX, state.ScreenScaleY, state.FormScale),
            &display == displays ? "9600|7200|0.98|1|1" : "12000|9000|0.95|1.2|0.82");
    }
}

TEST(Startup, InputsFollowTheChannels) {
    const std::pair<std::array<std::int16_t, 5>, const char*> rows[] = {
        {{1, 0, 0, 0, 0}, "1,0,0,0|1"}, {{0, 1, 0, 0, 0}, "1,0,0,0|1"}, {{1, 1, 0, 0, 0}, "1,0,0,0|1"},
        {{0, 0, 1, 0, 0}, "0,1,0,0|1"}, {{0, 0, 0, 1, 0}, "0,0,1,0|1"}, {{0, 0, 0, 0, 1}, "0,0,0,1|1"},
        {{1, 0, 1, 1, 1}, "1,1,1,1|4"}, {{0, 0, 2, 0, 0}, "0,0,0,0|0"},
    };
    AppState state;  // one for all rows: nothing of the row before may stay
    for (const auto& [channel, inputs] : rows) {
        state.Channel = channel;
        DeriveInputs(state);
        EXPECT_EQ(Joined(state.InputActive, state.ActiveCount), inputs);
    }
}

}  // namespace
}  // namespace kelvo::test
