#pragma once

#include <array>
#include <optional>
#include <vector>

namespace kelvo {

/// Buffers of one pH electrode, rows from 1: [1] pH, [2] mV. Row 0 holds zeros.
using BufferTable = std::vector<std::array<float, 3>>;

/// pH of a potential: linear between neighbouring buffers, the end segments extended. Neighbours are those of falling
/// mV, in whatever order the rows were taken. With a single buffer the line runs through pH 0 at 0 mV. pH 4 at 175.8 mV
/// and pH 7 at 0 mV make 100 mV pH 5.2935.
/// @param rows how many rows count, 1 or more
/// @return none for a table that has no line there: no row, or two rows of equal pH or equal mV.
std::optional<float> PhFromMv(const BufferTable& table, int rows, float millivolts);

/// pH of a sample at another temperature than the calibration's, °C: 7 - (7 - pH)·(calTemp + 273.15)/(sampleTemp +
/// 273.15); pH 7 is the isopotential point. Not a number at or below absolute zero and for an
/// infinite one.
float PhTempCorrect(float ph, float calTemp, float sampleTemp);

}  // namespace kelvo
