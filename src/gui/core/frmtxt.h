#pragma once

#include <array>

#include "kit/Screen.h"

class QPushButton;

namespace kelvo {

/// The start screen: four large buttons lead to the branches of the sub-menu and to the hardware setup.
class frmtxt : public Screen {
    Q_OBJECT
 public:
    explicit frmtxt(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override { GoBack(); }
    void OnFrameClose() override { Exit(); }

 private:
    void Choose(int i);
    void GoBack();
    void Exit();
    std::array<QPushButton*, 4> cmdMain_{};
};

}  // namespace kelvo
