#pragma once

#include "calibration/QualityPage.h"
#include "core/StateOf.h"
#include "tables/Reports.h"

namespace kelvo {

/// The calibration's quality from the current position down: verdict, figures, picture, points. A line that no longer
/// fits goes to a new sheet, where the points have their heads again.
void PrintQuality(const QualityPage& page, Sheets& writer);

/// The window's own "Print": a document of that page, with a line for the signature.
bool PrintQualityDocument(StateOf<const IseCalibration, const HardwareSettings, StatusMessages> state,
                          const QualityPage& page, const PrintServices& services);

}  // namespace kelvo
