#pragma once

#include "platform/Desk.h"
#include "tables/TableScreenLogic.h"

namespace kelvo {

/// What the table asks of the screens around it, by way of the desk.
class TableDeskQt : public TableDesk {
 public:
    explicit TableDeskQt(Desk& desk) : desk_(desk) {}
    void HideTable() override { desk_.Hide(ScreenCode::frmQSave); }
    void CloseTable() override { desk_.Close(ScreenCode::frmQSave); }
    void ShowScreen(ScreenCode code) override;
    void ResumeLiveDisplay() override { Resume(desk_, ScreenCode::frmDsply); }

    /// Tells a screen that is loaded and is a `RowHost` that its row is done.
    static void Resume(Desk& desk, ScreenCode code);

 private:
    Desk& desk_;
};

}  // namespace kelvo
