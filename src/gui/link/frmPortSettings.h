#pragma once

#include "kit/Screen.h"
#include "link/Link.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace kelvo {

/// "Comm Port Setup": repairs a port that cannot be used. It shows the dialog that `CommPort` keeps; the timers and
/// the port itself belong to the link, so closing the window stops nothing.
class frmPortSettings : public Screen {
    Q_OBJECT
 public:
    explicit frmPortSettings(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override;

 protected:
    void OnEscape() override { port_.cmdCancel(); }

 private:
    void ShowDialog();

    CommPort& port_;
    QComboBox* cboPort_;
    QComboBox* cboBitRate_;
    QLineEdit* txtStatus_;
    QLabel* lblAdvice_;
};

}  // namespace kelvo
