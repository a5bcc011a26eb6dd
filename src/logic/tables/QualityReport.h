#pragma once

#include "calibration/QualityPage.h"
#include "core/AppState.h"
#include "core/Dialogs.h"
#include "tables/PageWriter.h"

namespace kelvo {

/// The calibration's quality from the current position down: verdict, figures, picture, points. A line that no longer
/// fits goes to a new page.
void PrintQuality(const QualityPage& page, PageWriter& writer);

/// The window's own "Print": a document of that one page.
bool PrintQualityDocument(const AppState& state, const QualityPage& page, Printing& printing, Prompts& prompts);

}  // namespace kelvo
