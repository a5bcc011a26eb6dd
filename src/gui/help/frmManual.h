#pragma once

#include "kit/Screen.h"

class QLineEdit;

namespace kelvo {

class ManualView;

/// The manual, as it was built into the program: no file and no network is needed.
class frmManual : public Screen {
    Q_OBJECT
 public:
    explicit frmManual(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void FindNext();

    ManualView* pages_ = nullptr;
    QLineEdit* txtfind_ = nullptr;
};

}  // namespace kelvo
