#include "link/OneReading.h"

#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "link/ReadingState.h"

namespace kelvo {

void OneReading::ShowReadingState(const ReadingState& state) {
    doubt_ = ReadingStateText(state);
}

bool OneReading::ReadOne(AppContext& context) {
    if (context.link == nullptr) return false;
    doubt_.clear();
    context.screens.Close(ScreenCode::frmPtset);
    context.screens.Load(ScreenCode::frmPtset);
    context.link->StartLink();
    context.screens.ShowModal(ScreenCode::frmPtset);
    context.screens.Close(ScreenCode::frmPtset);
    if (context.link->PortOpen()) context.link->StopLink();
    return !context.screens.Ended();
}

}  // namespace kelvo
