#pragma once

#include "batch/Report.h"
#include "calibration/QualityLimits.h"
#include "core/StateOf.h"

namespace kelvo {

/// Fits the line of the calibration in the state as the calibration screen does, and adds slope, intercept and what
/// the calibration is worth. Points without a line add a remark in their place.
void AddLine(Report& report, StateOf<CalibrationState, const Paths> state);

/// All that a fit has: the coefficients of line and best-fit curve, the slopes of the segments, the deviations, the
/// theoretical slope, the verdict, and the points beside the line. The line of the state has been fitted.
/// @param customCharge  charge of an ion of the analyst's own, 0 not known
/// @param figures       true: figures as the window "Calibration Quality" rounds them; false: unrounded numbers
Report FitReport(CalibrationState& state, const QualityLimits& limits, int customCharge, bool figures);

}  // namespace kelvo
