#pragma once

#include <array>

#include "core/Routes.h"
#include "kit/Screen.h"

class QAction;
class QLabel;
class QPushButton;

namespace kelvo {

/// The sub-menu: a column of up to six buttons whose captions change with the branch. Each entry checks the hardware
/// configuration before it opens the screen that does the work; a row whose screen is not there is switched off.
class frmenu : public Screen {
    Q_OBJECT
 public:
    explicit frmenu(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override { GoBack(); }
    void OnFrameClose() override { Exit(); }

 private:
    void Choose(int i);
    void Open(const RouteRow& row);
    void LoadPhCalibrationIfNone();
    void GoBack();
    void Exit();

    QLabel* labmnu_;
    std::array<QPushButton*, 6> cmdSub_{};
    std::array<QLabel*, 6> tips_{};
};

}  // namespace kelvo
