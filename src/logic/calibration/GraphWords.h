#pragma once

#include <string>

#include "calibration/QualityPage.h"
#include "core/StateOf.h"

namespace kelvo {

// What a graph shows, in words for someone who hears the screen.

/// Axes, standards, curve and last sample of the calibration graph: "E from -500 to 500 mV over LogC from -5 to -1.
/// 2 standards, 1 outside the scale: LogC -4.98 at 120.3 mV, LogC 0.21 at -55.0 mV. Straight line, slope -57.30
/// mV/dec."
std::string CaliGraphWords(const CalibrationState& state);

/// The line and its residuals: how many standards there are, and which of them are marked.
std::string QualityPlotWords(const QualityPage& page);

}  // namespace kelvo
