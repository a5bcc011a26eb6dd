#include "core/Startup.h"

#include "core/Geometry.h"
#include "core/HardwareSettings.h"
#include "core/IonSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/Settings.h"
#include "core/StateOf.h"
#include "core/StoredWithCalibration.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const Section = "Hareware";

std::string Setting(const Paths& paths, const std::string& key) {
    return ReadSetting(Section, key, paths.IniPath);
}

/// A whole number of a settings file. A hand-edited value beyond 16 bits must not keep the program from
/// starting, so it reads as an empty key does.
std::int16_t WholeSetting(const Paths& paths, const std::string& key) {
    try {
        return ToInt16(Val(Setting(paths, key)));
    } catch (const RuntimeError&) {
        return 0;
    }
}

std::int16_t WholeOr(const Paths& paths, const std::string& key, std::int16_t whenZero) {
    const std::int16_t value = WholeSetting(paths, key);
    return value == 0 ? whenZero : value;
}

float SingleSetting(const Paths& paths, const std::string& key) {
    try {
        return ToSingle(Val(Setting(paths, key)));
    } catch (const RuntimeError&) {
        return 0;
    }
}

void LoadGeometry(Geometry& geometry, const DisplaySize& display) {
    const bool small = display.width == 9600 && display.height == 7200;
    geometry.ScreenWidth = small ? 9600 : 12000;
    geometry.ScreenHeight = small ? 7200 : 9000;
    geometry.ScreenScaleX = small ? 0.98f : 0.95f;
    geometry.ScreenScaleY = small ? 1.0f : 1.2f;
    geometry.FormScale = small ? 1.0f : 0.82f;
}

void LoadPaths(Paths& paths, const std::string& programFolder) {
    paths.AppPath = programFolder;
    if (paths.AppPath.empty() || paths.AppPath.back() != '/') paths.AppPath += '/';
    paths.DataPath = paths.HelpPath = paths.ListPath = paths.JournalPath = paths.AppPath;
    paths.IniPath = paths.AppPath + "KELVO.ini";
}

void LoadHardware(StateOf<const Paths, IonSettings, HardwareSettings, ReadingSettings> state) {
    IonSettings& ion = state;
    HardwareSettings& hardware = state;
    ReadingSettings& reading = state;
    hardware.PortIndex = WholeSetting(state, "PortSetting");
    // "None yet" is -1; the same 16 bits without their sign read as 65535.
    const bool noneYet = Val(Setting(state, "IonIndex")) == 65535;
    ion.IonIndex = noneYet ? std::int16_t{NoIon} : WholeSetting(state, "IonIndex");
    hardware.DateFormat = WholeSetting(state, "DateFormat");
    hardware.Operator = Setting(state, "Operator");
    hardware.RefElectrode[0] = Setting(state, "RefType");
    hardware.RefElectrode[1] = Setting(state, "RefNum");
    hardware.ElectrodeNum[0] = Setting(state, "ISENum");
    hardware.ElectrodeNum[1] = Setting(state, "ph1Num");
    hardware.ElectrodeNum[2] = Setting(state, "ph2Num");
    hardware.ISAB = Setting(state, "ISAB");
    if (hardware.ISAB.empty()) hardware.ISAB = "None";
    reading.ASD = WholeOr(state, "ASD", 1);
    reading.ASDavg = WholeOr(state, "ASDavg", 10);
    reading.Waittime = WholeOr(state, "Waittime", 5);
    reading.Threshold = SingleSetting(state, "threshold");
    // A threshold of 0 puts 0.02 as a whole number, that is 0, into Preset and moves on; the next key replaces
    // it, and the threshold stays 0.
    if (reading.Threshold == 0) reading.Preset = ToInt16(0.02);
    reading.Preset = WholeOr(state, "Preset", 30);
    hardware.NetworkPrinter = WholeSetting(state, "NetworkPrinter");
}

void LoadCustomIon(StateOf<const Paths, IonSettings> state) {
    IonSettings& ion = state;
    if (ion.IonIndex != CustomIonRow) return;
    ion.CustomIon = Setting(state, "CustomIon");
    ion.CustomWeight = SingleSetting(state, "CustomWeight");
    if (ion.CustomIon.empty()) ion.CustomIon = "Custom";
    if (ion.CustomWeight == 0) ion.CustomWeight = 100;
    ion.Ions.names[CustomIonRow] = ion.CustomIon;
    ion.Ions.weights[CustomIonRow] = ion.CustomWeight;
}

void LoadChannels(StateOf<const Paths, HardwareSettings> state) {
    HardwareSettings& hardware = state;
    for (std::size_t i = 0; i < hardware.Channel.size(); ++i)
        hardware.Channel[i] = WholeSetting(state, "Channel" + TrimStr(static_cast<int>(i)));
    hardware.Temperature[1] = Setting(state, "Temperature1");
    hardware.Temperature[2] = Setting(state, "Temperature2");
}

}  // namespace

void DeriveInputs(HardwareSettings& hardware) {
    hardware.InputActive.fill(0);
    hardware.ActiveCount = 0;
    if (hardware.Channel[0] == 1 || hardware.Channel[1] == 1) {
        hardware.InputActive[0] = 1;
        ++hardware.ActiveCount;
    }
    for (std::size_t i = 2; i < hardware.Channel.size(); ++i) {
        if (hardware.Channel[i] != 1) continue;
        hardware.InputActive[i - 1] = 1;
        ++hardware.ActiveCount;
    }
}

void LoadState(
    StateOf<Paths, Geometry, Navigation, IonSettings, HardwareSettings, StoredWithCalibration, ReadingSettings> state,
    const DisplaySize& display, const std::string& programFolder) {
    Navigation& navigation = state;
    IonSettings& ion = state;
    HardwareSettings& hardware = state;
    StoredWithCalibration& stored = state;
    state.Get<Paths>() = {};
    state.Get<Geometry>() = {};
    navigation = {};
    ion = {};
    hardware = {};
    stored = {};
    state.Get<ReadingSettings>() = {};
    LoadGeometry(state, display);
    LoadPaths(state, programFolder);
    LoadHardware(state);
    // An ion number that no row of the table has counts as no ion chosen; the tables are never read beyond it.
    if (ion.IonIndex < NoIon || ion.IonIndex >= IonRows) ion.IonIndex = NoIon;
    LoadCustomIon(state);
    stored.FileOperator = hardware.Operator;
    stored.FileRefElectrode = hardware.RefElectrode;
    stored.FileElectrodeNum = hardware.ElectrodeNum;
    LoadChannels(state);
    ion.CaliTemp = hardware.Temperature[1];
    hardware.HardwarePort = static_cast<std::int16_t>(hardware.PortIndex == 32767 ? 1 : hardware.PortIndex + 1);
    DeriveInputs(state);
    navigation.NorvakCaption = "Start";
    navigation.AboutIsStart = true;
}

}  // namespace kelvo
