#pragma once

#include <array>

#include "kit/Screen.h"
#include "menu/MenuPresenter.h"

class QAction;
class QLabel;
class QPushButton;

namespace kelvo {

/// The sub-menu: a column of up to six buttons whose captions change with the branch; a row whose screen is not there
/// is switched off. `MenuPresenter` decides what each leads to.
class frmenu : public Screen {
    Q_OBJECT
 public:
    explicit frmenu(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override { menu_.Back(); }
    void OnFrameClose() override { menu_.Exit(); }

 private:
    MenuPresenter menu_;
    QLabel* labmnu_;
    std::array<QPushButton*, 6> cmdSub_{};
    std::array<QLabel*, 6> tips_{};
};

}  // namespace kelvo
