#include "calibration/CaliSetup.h"

#include "calibration/CaliFile.h"
#include "calibration/CaliGraph.h"
#include "calibration/CaliSession.h"
#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/Settings.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr const char* Section = "Setting";

/// A list index from the settings; -1 when the list has no such row.
int IndexSetting(const Paths& paths, const char* key, std::size_t rows) {
    const double value = Val(ReadSetting(Section, key, paths.IniPath));
    return value >= 0 && value < static_cast<double>(rows) ? static_cast<int>(value) : -1;
}

}  // namespace

void CaliSetup::Load(bool onLineAvailable) {
    ticked = {!onLineAvailable, onLineAvailable, false};
    txtspin = ReadSetting(Section, "CaliPtr", paths_.IniPath);
    ionIndex = listedIon_ = calibration_.IonIndex;
    mvIndex = IndexSetting(state_, "mV", MvRows.size());
    logCIndex = IndexSetting(state_, "LogC", LogCCaptions.size());
}

std::vector<std::string> CaliSetup::MvList() const {
    return {MvRows.begin(), MvRows.end()};
}

std::vector<std::string> CaliSetup::LogCList() const {
    std::vector<std::string> rows;
    rows.reserve(LogCCaptions.size());
    for (int i = 0; i < static_cast<int>(LogCCaptions.size()); ++i)
        rows.push_back(LogCRow(state_, i));
    return rows;
}

void CaliSetup::SpinUp() {
    const double next = Val(txtspin) + 1;
    txtspin = TrimStr(next > MaxCaliPoints ? double{MaxCaliPoints} : next);
}

void CaliSetup::SpinDown() {
    const double next = Val(txtspin) - 1;
    txtspin = TrimStr(next < 1 ? 1.0 : next);
}

void CaliSetup::SpinKeyRefused() {
    prompts_.Message("Wrong data type, please re-enter an integer (2 to 10)");
}

void CaliSetup::SpinEnter() {
    const double value = Val(txtspin);
    if (value >= 11) txtspin = "10";
    if (value < 2) txtspin = "2";
}

void CaliSetup::Tick(int box, bool on) {
    ticked.at(static_cast<std::size_t>(box)) = on;
    if (!on || box == StabilityWatch) return;
    ticked[box == Keyboard ? OnLine : Keyboard] = false;
}

bool CaliSetup::Refuse(Missing what) {
    missing = what;
    if (what == Missing::Points) {
        SpinKeyRefused();
    } else {
        const char* parts = what == Missing::Ion    ? "select an ion"
                            : what == Missing::Mode ? "select 'Keyboard Input or On line Reading'"
                                                    : "select the scale(s)";
        prompts_.Message(std::string("Setup is incomplete, please ") + parts + " and other options");
    }
    calibration_.CaliDirty = 0;
    return false;
}

bool CaliSetup::Accept() {
    calibration_.CaliDirty = 1;
    missing = Missing::Nothing;
    if (mvIndex < 0) return Refuse(Missing::MvScale);
    if (logCIndex < 0) return Refuse(Missing::LogCScale);
    if (ionIndex < 0) return Refuse(Missing::Ion);
    if (!ticked[Keyboard] && !ticked[OnLine]) return Refuse(Missing::Mode);
    const double points = Val(txtspin);
    if (points < 1 || points > MaxCaliPoints || points != static_cast<int>(points)) return Refuse(Missing::Points);
    calibration_.IonIndex = static_cast<std::int16_t>(ionIndex);
    if (!ticked[StabilityWatch]) reading_.ASD = -1;
    Write();
    calibration_.PointTemp.clear();
    calibration_.Cancelled = true;
    calibration_.ReadingActive = true;
    calibration_.SensorWarned = false;
    calibration_.OnLine = ticked[OnLine];
    return true;
}

void CaliSetup::Write() const {
    const auto write = [this](const char* section, const char* key, const std::string& value) {
        WriteSetting(section, key, value, paths_.IniPath);
    };
    write(Section, "LogC", TrimStr(logCIndex));
    write(Section, "mV", TrimStr(mvIndex));
    write(Section, "Ion", TrimStr(ionIndex));
    write(Section, "CaliPtr", Trim(txtspin));
    write("Hareware", "ASD", TrimStr(int{reading_.ASD}));
    write(Section, "DataMode", TrimStr(ticked[OnLine] ? OnLine : Keyboard));
}

void CaliSetup::BeginEntry() {
    calibration_.MvScaleIndex = static_cast<std::int16_t>(mvIndex);
    calibration_.LogCScaleIndex = static_cast<std::int16_t>(logCIndex);
    CaliSession session(state_, prompts_);
    session.ClearGraph();
    session.DrawEmpty();
    session.StartPoints(static_cast<int>(Val(txtspin)));
}

void CaliSetup::BeginPoint(int i) {
    calibration_.CurrentPoint = static_cast<std::int16_t>(i);
    if (calibration_.OnLine) {
        calibration_.PointTitle = "On Line Data Reading ...";
        calibration_.PointPrompt =
            "Reading" + Str(i) +
            ":  type in the concentration (ppm, mol/L or Log), then immerse the electrode in the "
            "solution and press 'Enter' to start the measurement.";
        return;
    }
    calibration_.PointTitle = "CALIBRATION";
    calibration_.PointPrompt = "Calibration point" + Str(i) +
                               ":  type in calibration data in the boxes below, press 'Enter', then click on 'OK'.";
}

void CaliSetup::Abandon() {
    calibration_.CaliDirty = 0;
    calibration_.CaliPoints = 0;
    CaliSession(state_, prompts_).ClearGraph();
}

void CaliSetup::Complete(const Clock& clock) {
    calibration_.CaliDate = DateTimeText(clock.Now(), hardware_.DateFormat);
    calibration_.FileTemp = calibration_.PointTemp;
    calibration_.FileDate = calibration_.CaliDate;
}

void CaliSetup::Cancel() {
    ClearPaths(state_);
    calibration_.Cancelled = true;
}

std::string CaliSetup::StatusMessage() const {
    if (ticked[StabilityWatch] && reading_.ASD < 1)
        return "Auto Stability Detection is ticked, but its mode is off: choose one in Option, Edit ASD.";
    std::string remark;
    if (Trim(txtspin) == "1")
        remark = "One point: the line is drawn with a slope that you type in afterwards. Enter in its box makes it 2.";
    if (ionIndex != listedIon_ && listedIon_ >= 0 && ionIndex >= 0)
        remark += std::string(remark.empty() ? "" : " ") + "The ppm limits of the LogC scale are those of " +
                  calibration_.Ions.names[static_cast<std::size_t>(listedIon_)] + "; LogC itself holds for every ion.";
    return remark;
}

}  // namespace kelvo
