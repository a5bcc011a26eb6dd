#pragma once

#include "kit/AppContext.h"

namespace kelvo {

/// Writes what is not saved yet into files of its own beside the program's files, before the program ends by a
/// failure: the calibration in hand (of an entry in progress the points that are in), the boxes of an addition screen,
/// the rows of the data table. A note beside them names the files for the next start. Never throws; what cannot be
/// written is left out.
void KeepUnsavedWork(AppContext& context);

/// Tells once, at the start, which files an earlier failure has left, and takes the note away.
void ReportKeptWork(AppContext& context);

}  // namespace kelvo
