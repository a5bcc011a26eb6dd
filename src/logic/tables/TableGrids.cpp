#include "tables/TableGrids.h"

#include <vector>

#include "calibration/CalibrationState.h"
#include "calibration/IseCalibration.h"
#include "core/Clock.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "core/StoredWithCalibration.h"
#include "core/TableState.h"
#include "core/TemperatureText.h"
#include "ph/PhCalibration.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const LineEnd = "\r\n";

ScreenCode Owner(const Navigation& navigation) {
    return navigation.ReturnTo();
}

const std::vector<std::string> IseHeads = {"Sample Number", "Time", "mV", "ppm", "mol/L", "°C", "°F", "pH"};
const std::vector<std::string> PhHeads = {"No.",       "Time",         "Elect.1 (pH)", "Elect.1 (mV)", "Temp.1 °C",
                                          "Temp.1 °F", "Elect.2 (pH)", "Elect.2 (mV)", "Temp.2 °C",    "Temp.2 °F"};
const std::vector<std::string> PhIseHeads = {"No.",       "Time", "Elect.1 (ppm)", "Elect.1 (mV)", "Temp.1 °C",
                                             "Temp.1 °F", "N/A",  "N/A",           "N/A",          "N/A"};
const std::vector<std::string> SampleHeads = {"No.",      "Time",        "Smp.°C",       "Smp.°F",
                                              "Smp.(mL)", "Std.(mL)",    "Std.(ppm)",    "Std. (mol/L)",
                                              "Std.(mV)", "Std+Smp(mV)", "Sample (ppm)", "Sample (mol/L)"};
const std::vector<std::string> StandardHeads = {"No.",      "Time",        "Smp.°C",       "Smp.°F",
                                                "Smp.(mL)", "Std. (mL)",   "Std. (ppm)",   "Std.(mol/L)",
                                                "Smp.(mV)", "Smp+Std(mV)", "Sample (ppm)", "Sample(mol/L)"};

const std::vector<int> IseWidths = {10, 2050, 1050, 1050, 1050, 1050, 1050, 800, 800};
const std::vector<int> PhWidths = {1100, 900, 900, 900, 900, 900, 900, 900, 900, 900, 900};
const std::vector<int> AdditionWidths = {1, 500, 500, 600, 600, 700, 700, 800, 900, 650, 1020, 1000, 1200};

void FillIseTexts(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table, const Clock& clock) {
    const CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    table.txtData[0] = calibration.FileDate;
    table.txtData[1] = StandardsText(state);
    table.txtData[2] = calibration.FileTemp;
    table.txtData[3] = FahrenheitCell(calibration.FileTemp);
    const bool ionKnown = calibration.IonIndex >= 0 && calibration.IonIndex < IonRows;
    table.txtData[4] =
        ionKnown ? calibration.Ions.names[static_cast<std::size_t>(calibration.IonIndex)] : std::string();
    table.txtData[5] = DateText(clock.Now(), hardware.DateFormat);
    table.txtData[6] = "Operator: " + hardware.Operator;
    table.txtData[7] = hardware.ISAB;
}

/// Buffers of one electrode: "pH: 7, 4" CR LF "mV:0, 177(25°C)".
std::string BuffersText(const std::vector<std::array<float, 3>>& buffers, int count, float celsius) {
    std::string ph, mv;
    for (int j = 1; j <= count && j < static_cast<int>(buffers.size()); ++j) {
        const std::array<float, 3>& row = buffers[static_cast<std::size_t>(j)];
        ph += (j > 1 ? ", " : "") + TrimStr(row[1]);
        mv += (j > 1 ? ", " : "") + TrimStr(row[2]);
    }
    return "pH: " + ph + LineEnd + "mV:" + mv + "(" + TrimStr(celsius) + "°C)";
}

void FillElectrode(StateOf<const PhCalibration, const HardwareSettings, const StoredWithCalibration> state,
                   DataTable& table, std::size_t electrode, std::size_t channel) {
    const PhCalibration& phCalibration = state;
    const HardwareSettings& hardware = state;
    const StoredWithCalibration& stored = state;
    if (phCalibration.BufferCount[electrode] == 0 || hardware.Channel[channel] != 1) return;
    const std::size_t box = electrode == 1 ? 0 : 3;
    table.txtData[box] = phCalibration.PhCaliDate[electrode];
    table.txtData[box + 1] = stored.FileElectrodeNum[electrode];
    table.txtData[box + 2] = BuffersText(electrode == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2,
                                         phCalibration.BufferCount[electrode], phCalibration.PhCaliTemp[electrode]);
}

void SetGrid(DataTable& table, const std::vector<std::string>& heads, const std::vector<int>& widths) {
    table.ColWidths = widths;
    table.SetHeads(heads);
}

}  // namespace

std::string FahrenheitCell(const std::string& celsius) {
    if (celsius.empty()) return {};
    try {
        return FahrenheitText(ToSingle(Val(celsius)));
    } catch (const RuntimeError&) {
        return "N/A";
    }
}

std::string PartialSlopeText(const IseCalibration& calibration, int i) {
    const auto a = static_cast<std::size_t>(i);
    const double decades = double{calibration.CaliLogC.at(a + 1)} - calibration.CaliLogC.at(a);
    if (decades == 0) return "N/A";
    return Format((double{calibration.CaliE.at(a + 1)} - calibration.CaliE.at(a)) / decades, "#.00");
}

std::string StandardsText(const IseCalibration& calibration) {
    std::string ppm, mv, slopes;
    for (int i = 1; i <= calibration.CaliPoints; ++i) {
        ppm += TrimStr(calibration.CaliPpm.at(static_cast<std::size_t>(i))) + "\t";
        mv += TrimStr(calibration.CaliE.at(static_cast<std::size_t>(i))) + "\t";
    }
    if (calibration.CaliPoints == 1) slopes = Format(calibration.CaliSlope, "#0.00") + "\t";
    for (int i = 1; i < calibration.CaliPoints; ++i)
        slopes += PartialSlopeText(calibration, i) + "\t";
    return ppm + LineEnd + mv + LineEnd + slopes;
}

void TableHead_ISE_Continuous(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table) {
    const CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    table.HeadKind = DataTable::Head::Ise;
    table.Label1 = {"Calibration:",
                    "Stanard (ppm)  Value (mV)  Slopes  ",
                    "°C",
                    "°F",
                    "Ion:",
                    "Experiment:",
                    "Ref. : " + calibration.FileRefElectrode[0] + " " + calibration.FileRefElectrode[1],
                    "Ref. : " + hardware.RefElectrode[0] + " " + hardware.RefElectrode[1],
                    "ISE Serial No. " + calibration.FileElectrodeNum[0],
                    "ISE Serial No. " + hardware.ElectrodeNum[0],
                    "ISAB/Notes :"};
    table.txtData[1] = StandardsText(state);
    table.HeadChanged();
}

void TableHead_ISE(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table) {
    TableHead_ISE_Continuous(state, table);
    table.Label1[1] = "Slope:";
    table.HeadChanged();
}

void TableHead_pH(const HardwareSettings& hardware, DataTable& table) {
    table.HeadKind = DataTable::Head::Ph;
    table.Label1 = {"Calibration date/time:",
                    "Serial No.",
                    "Buffers:",
                    "Calibration date/time:",
                    "Serial No.",
                    "Buffers:",
                    "Experiment Date:",
                    "Electrode 1",
                    "Electrode 2",
                    "Operator: " + hardware.Operator,
                    "ISAB/Notes :"};
    table.HeadChanged();
}

void FillIseGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table, const Clock& clock) {
    FillIseTexts(state, table, clock);
    SetGrid(table, IseHeads, IseWidths);
}

void FillPhGrid(
    StateOf<const CalibrationState, const Navigation, const PhCalibration, const TableState, const HardwareSettings>
        state,
    DataTable& table, const Clock& clock) {
    const Navigation& navigation = state;
    const TableState& tableState = state;
    const HardwareSettings& hardware = state;
    if (navigation.pHMode == 0) {
        FillIseTexts(state, table, clock);
        SetGrid(table, PhIseHeads, PhWidths);
        return;
    }
    if (tableState.ViewOnly == 0) {
        FillElectrode(state, table, 1, 0);
        FillElectrode(state, table, 2, 3);
        table.txtData[6] = DateText(clock.Now(), hardware.DateFormat);
    }
    SetGrid(table, PhHeads, PhWidths);
}

void FillMethodHead(DataTable& table) {
    table.txtData[0] = table.Method.Date;
    // The method knows one slope and no standards, so the slope stands in the third line, where readers of a
    // single-slope file put it too.
    table.txtData[1] = std::string("N/A") + LineEnd + "N/A" + LineEnd + table.Method.Slope;
    table.txtData[2] = table.Method.Celsius;
    table.txtData[3] = table.Method.Fahrenheit;
    table.txtData[4] = table.Method.Ion;
}

void FillSampleGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table,
                    const Clock& clock) {
    FillIseTexts(state, table, clock);
    FillMethodHead(table);
    SetGrid(table, SampleHeads, AdditionWidths);
}

void FillStandardGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table,
                      const Clock& clock) {
    FillIseTexts(state, table, clock);
    FillMethodHead(table);
    SetGrid(table, StandardHeads, AdditionWidths);
}

void RunHeadRoutine(StateOf<const CalibrationState, const Navigation, const HardwareSettings> state, DataTable& table) {
    const Navigation& navigation = state;
    const ScreenCode owner = Owner(state);
    const bool ph = owner == ScreenCode::frmDsply || (owner == ScreenCode::frmPHMe && navigation.pHMode != 0);
    ph ? TableHead_pH(state, table) : TableHead_ISE_Continuous(state, table);
}

void RunGridRoutine(
    StateOf<const CalibrationState, const Navigation, const PhCalibration, const TableState, const HardwareSettings>
        state,
    DataTable& table, const Clock& clock) {
    const Navigation& navigation = state;
    switch (Owner(state)) {
        case ScreenCode::frmDsply: FillPhGrid(state, table, clock); return;
        case ScreenCode::frmPHMe:
            navigation.pHMode != 0 ? FillPhGrid(state, table, clock) : FillIseGrid(state, table, clock);
            return;
        case ScreenCode::frmSampa: FillSampleGrid(state, table, clock); return;
        case ScreenCode::frmStanad01: FillStandardGrid(state, table, clock); return;
        default: FillIseGrid(state, table, clock);
    }
}

}  // namespace kelvo
