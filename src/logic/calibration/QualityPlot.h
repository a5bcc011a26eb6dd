#pragma once

#include "calibration/Quality.h"
#include "core/DisplayList.h"

namespace kelvo {

/// The calibration line with its standards above, and their residuals below on the same LogC axis, on the surface of
/// the calibration graph (9400 × 6700 twips). Both potentials scale themselves to what is shown. Grey lines stand at
/// ± the residual that is still good; marked standards are red and carry their number; the fit for low concentrations
/// is light blue. Without a line only the standards are drawn, without standards nothing.
/// @param lowEnd  null: not shown
void DrawQuality(DisplayList& picture, const CalibrationQuality& quality, const Standards& standards,
                 const QualityLimits& limits, const LowEndFit* lowEnd);

}  // namespace kelvo
