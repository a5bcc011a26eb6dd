#include "core/Startup.h"

#include "core/Settings.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const Section = "Hareware";

std::string Setting(const AppState& state, const std::string& key) {
    return ReadSetting(Section, key, state.IniPath);
}

/// A whole number of a settings file. A hand-edited value beyond 16 bits must not keep the program from
/// starting, so it reads as an empty key does.
std::int16_t WholeSetting(const AppState& state, const std::string& key) {
    try {
        return ToInt16(Val(Setting(state, key)));
    } catch (const RuntimeError&) {
        return 0;
    }
}

std::int16_t WholeOr(const AppState& state, const std::string& key, std::int16_t whenZero) {
    const std::int16_t value = WholeSetting(state, key);
    return value == 0 ? whenZero : value;
}

float SingleSetting(const AppState& state, const std::string& key) {
    try {
        return ToSingle(Val(Setting(state, key)));
    } catch (const RuntimeError&) {
        return 0;
    }
}

void LoadGeometry(AppState& state, const DisplaySize& display) {
    const bool small = display.width == 9600 && display.height == 7200;
    state.ScreenWidth = small ? 9600 : 12000;
    state.ScreenHeight = small ? 7200 : 9000;
    state.ScreenScaleX = small ? 0.98f : 0.95f;
    state.ScreenScaleY = small ? 1.0f : 1.2f;
    state.FormScale = small ? 1.0f : 0.82f;
}

void LoadPaths(AppState& state, const std::string& programFolder) {
    state.AppPath = programFolder;
    if (state.AppPath.empty() || state.AppPath.back() != '/') state.AppPath += '/';
    state.DataPath = state.HelpPath = state.ListPath = state.JournalPath = state.AppPath;
    state.IniPath = state.AppPath + "KELVO.ini";
}

void LoadHardware(AppState& state) {
    state.PortIndex = WholeSetting(state, "PortSetting");
    // "None yet" is -1; the same 16 bits without their sign read as 65535.
    const bool noneYet = Val(Setting(state, "IonIndex")) == 65535;
    state.IonIndex = noneYet ? std::int16_t{NoIon} : WholeSetting(state, "IonIndex");
    state.DateFormat = WholeSetting(state, "DateFormat");
    state.Operator = Setting(state, "Operator");
    state.RefElectrode[0] = Setting(state, "RefType");
    state.RefElectrode[1] = Setting(state, "RefNum");
    state.ElectrodeNum[0] = Setting(state, "ISENum");
    state.ElectrodeNum[1] = Setting(state, "ph1Num");
    state.ElectrodeNum[2] = Setting(state, "ph2Num");
    state.ISAB = Setting(state, "ISAB");
    if (state.ISAB.empty()) state.ISAB = "None";
    state.ASD = WholeOr(state, "ASD", 1);
    state.ASDavg = WholeOr(state, "ASDavg", 10);
    state.Waittime = WholeOr(state, "Waittime", 5);
    state.Threshold = SingleSetting(state, "threshold");
    // A threshold of 0 puts 0.02 as a whole number, that is 0, into Preset and moves on; the next key replaces
    // it, and the threshold stays 0.
    if (state.Threshold == 0) state.Preset = ToInt16(0.02);
    state.Preset = WholeOr(state, "Preset", 30);
    state.NetworkPrinter = WholeSetting(state, "NetworkPrinter");
}

void LoadCustomIon(AppState& state) {
    if (state.IonIndex != CustomIonRow) return;
    state.CustomIon = Setting(state, "CustomIon");
    state.CustomWeight = SingleSetting(state, "CustomWeight");
    if (state.CustomIon.empty()) state.CustomIon = "Custom";
    if (state.CustomWeight == 0) state.CustomWeight = 100;
    state.Ions.names[CustomIonRow] = state.CustomIon;
    state.Ions.weights[CustomIonRow] = state.CustomWeight;
}

void LoadChannels(AppState& state) {
    for (std::size_t i = 0; i < state.Channel.size(); ++i)
        state.Channel[i] = WholeSetting(state, "Channel" + TrimStr(static_cast<int>(i)));
    state.Temperature[1] = Setting(state, "Temperature1");
    state.Temperature[2] = Setting(state, "Temperature2");
}

}  // namespace

void DeriveInputs(AppState& state) {
    state.InputActive.fill(0);
    state.ActiveCount = 0;
    if (state.Channel[0] == 1 || state.Channel[1] == 1) {
        state.InputActive[0] = 1;
        ++state.ActiveCount;
    }
    for (std::size_t i = 2; i < state.Channel.size(); ++i) {
        if (state.Channel[i] != 1) continue;
        state.InputActive[i - 1] = 1;
        ++state.ActiveCount;
    }
}

void LoadState(AppState& state, const DisplaySize& display, const std::string& programFolder) {
    state = AppState();
    LoadGeometry(state, display);
    LoadPaths(state, programFolder);
    LoadHardware(state);
    // An ion number that no row of the table has counts as no ion chosen; the tables are never read beyond it.
    if (state.IonIndex < NoIon || state.IonIndex >= IonRows) state.IonIndex = NoIon;
    LoadCustomIon(state);
    state.FileOperator = state.Operator;
    state.FileRefElectrode = state.RefElectrode;
    state.FileElectrodeNum = state.ElectrodeNum;
    LoadChannels(state);
    state.CaliTemp = state.Temperature[1];
    state.HardwarePort = static_cast<std::int16_t>(state.PortIndex == 32767 ? 1 : state.PortIndex + 1);
    DeriveInputs(state);
    state.NorvakCaption = "Start";
}

}  // namespace kelvo
