#pragma once

#include <array>
#include <string>

#include "core/StateOf.h"
#include "core/Tables.h"

namespace kelvo {

/// One point of a recording.
struct RecordingPoint {
    int n = 0;                       ///< its number, from 0
    std::string time;                ///< "hh:mm:ss"
    std::array<float, 2> value{};    ///< pH of the electrodes, or ppm in [0]; not a number where there is no value
    std::array<float, 2> mv{};       ///< mV
    std::array<float, 2> celsius{};  ///< °C of the sensors
};

/// Cells of the point as the live file and the grid take them: nine for ISE, eleven for pH. What has no value is "N/A".
std::string RecordingRow(StateOf<const Navigation, const IonSettings, const HardwareSettings> state,
                         const RecordingPoint& point);

/// A row read back from a file.
struct RecordingCells {
    RecordingPoint point;             ///< `n` is left to the reader
    std::array<bool, 2> electrode{};  ///< whether the cell of the electrode's value says anything but "N/A"
    int faulty = 0;                   ///< cells that are neither a number nor "N/A"
};
/// The ppm cell of an ISE row is a whole number, empty below 0.5; where it has fewer digits than the mol/L cell, the
/// value is that of the latter.
/// @param ions  for the molar mass of the ion that the row names
RecordingCells ReadRecordingRow(bool ph, const std::string& row, const IonTable& ions);
/// The ion that an ISE row is named for: "F" of "F - 12".
std::string IonOfRow(const std::string& row);

}  // namespace kelvo
