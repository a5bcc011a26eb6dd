#pragma once

#include "kit/AppContext.h"
#include "ph/RecordingPresenter.h"

namespace kelvo {

// Ways of the recording's graph out of the program. Failures are told in the words of the file routines.

/// The graph as a picture of pixels, at three times the size of the screen's design.
void SaveGraphAsPng(AppContext& context, const RecordingPresenter& recording);
/// The graph as lines and letters, sharp at any size.
void SaveGraphAsSvg(AppContext& context, const RecordingPresenter& recording);
/// Both on the clipboard, for the program that takes it to choose from.
void CopyGraph(const RecordingPresenter& recording);
/// "Graph" of the print menu: title, graph, last values, on one page.
void PrintRecordingGraph(AppContext& context, const RecordingPresenter& recording);

}  // namespace kelvo
