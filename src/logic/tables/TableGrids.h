#pragma once

#include "core/StateOf.h"
#include "tables/DataTable.h"

namespace kelvo {

class Clock;

// Heads and layouts of the data table by its owner, which `ReturnScreen` names: 6 the pH live display, 15 the
// continuous recording, 22 sample addition, 23 standard addition, any other direct potentiometry.

/// Captions of the ISE head, and `txtData(1)`: standards, values and slopes in three lines.
void TableHead_ISE_Continuous(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table);
/// The same with the single "Slope:" of the older head.
void TableHead_ISE(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table);
/// Captions of the pH head.
void TableHead_pH(const HardwareSettings& hardware, DataTable& table);

/// Texts of the ISE head and the nine columns of direct potentiometry and ISE recording.
void FillIseGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table, const Clock& clock);
/// Texts of the pH head (of the ISE head when `pHMode` is 0) and the eleven columns of the two electrodes.
/// With `ViewOnly` 1 the texts are left to the file.
void FillPhGrid(
    StateOf<const CalibrationState, const Navigation, const PhCalibration, const TableState, const HardwareSettings>
        state,
    DataTable& table, const Clock& clock);
/// ISE head with date, slope, temperatures and ion of the method screen, and the thirteen columns.
void FillSampleGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table,
                    const Clock& clock);
void FillStandardGrid(StateOf<const CalibrationState, const HardwareSettings> state, DataTable& table,
                      const Clock& clock);

/// Date, slope, temperatures and ion of an addition method, as `Method` has them, into the head.
void FillMethodHead(DataTable& table);

/// The head routine and the grid routine that belong to the present owner.
void RunHeadRoutine(StateOf<const CalibrationState, const Navigation, const HardwareSettings> state, DataTable& table);
void RunGridRoutine(
    StateOf<const CalibrationState, const Navigation, const PhCalibration, const TableState, const HardwareSettings>
        state,
    DataTable& table, const Clock& clock);

/// °F of a temperature as text, mask "#0.0"; empty of none, "N/A" of one that is too large for a number of 32 bits.
std::string FahrenheitCell(const std::string& celsius);
/// "10<TAB>100<TAB>CRLF-120.5<TAB>-61.5<TAB>CRLF59.00<TAB>": ppm and mV of the points, plain, and the partial
/// slopes with mask "#.00", "N/A" where two points have the same LogC; the slope itself ("#0.00") with one point.
std::string StandardsText(const IseCalibration& calibration);
/// Partial slope of the points i and i + 1 (from 1), mask "#.00" or "N/A".
std::string PartialSlopeText(const IseCalibration& calibration, int i);

}  // namespace kelvo
