#pragma once

#include "kit/ScreenManager.h"
#include "tables/TablePresenter.h"

namespace kelvo {

/// What the table asks of the screens around it, by way of the screens.
class TableNavigatorQt : public TableNavigator {
 public:
    explicit TableNavigatorQt(ScreenManager& screens) : screens_(screens) {}
    void HideTable() override { screens_.Hide(ScreenCode::frmQSave); }
    void CloseTable() override { screens_.Close(ScreenCode::frmQSave); }
    void ShowScreen(ScreenCode code) override;
    void ResumeLiveDisplay() override { Resume(screens_, ScreenCode::frmDsply); }

    /// Tells a screen that is loaded and is a `RowClient` that its row is done.
    static void Resume(ScreenManager& screens, ScreenCode code);

 private:
    ScreenManager& screens_;
};

}  // namespace kelvo
