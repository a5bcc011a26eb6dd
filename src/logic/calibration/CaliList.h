#pragma once

#include <string>
#include <vector>

namespace kelvo {

struct Calibration;

/// Lines of the list `lstCli`: title, total slope, temperature, an empty line, the heads and one line a point.
/// Fields are filled up on the left with "_" to widths of 4, 7, 10 and 6, so that figures stand under their heads
/// in a fixed-pitch font; a figure wider than its field is shown whole.
std::vector<std::string> CaliListRows(const Calibration& calibration);

/// The line of the temperature, mask "#0.00"; an unknown temperature stays empty.
std::string CaliListTemperature(const std::string& temperature);

}  // namespace kelvo
