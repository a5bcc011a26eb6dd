#include "platform/TableDeskQt.h"

#include "platform/Screen.h"
#include "tables/RowHost.h"

namespace kelvo {

void TableDeskQt::ShowScreen(ScreenCode code) {
    if (desk_.IsLoaded(code)) desk_.Show(code);
}

void TableDeskQt::Resume(Desk& desk, ScreenCode code) {
    if (auto* host = dynamic_cast<RowHost*>(desk.Find(code))) host->RowDone();
}

}  // namespace kelvo
