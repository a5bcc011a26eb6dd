#include "tables/TableNavigatorQt.h"

#include "kit/Screen.h"
#include "tables/RowClient.h"

namespace kelvo {

void TableNavigatorQt::ShowScreen(ScreenCode code) {
    if (screens_.IsLoaded(code)) screens_.Show(code);
}

void TableNavigatorQt::Resume(ScreenManager& screens, ScreenCode code) {
    if (auto* host = dynamic_cast<RowClient*>(screens.Find(code))) host->RowDone();
}

}  // namespace kelvo
