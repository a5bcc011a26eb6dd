#pragma once

#include "link/Link.h"
#include "platform/Screen.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace kelvo {

/// "Comm Port Setup": repairs a port that cannot be used. It shows the dialog that `CommPort` keeps; the timers and
/// the port itself belong to the link, so closing the window stops nothing.
class frmPortSettings : public Screen {
    Q_OBJECT
 public:
    explicit frmPortSettings(House& house);
    void OnLoad() override { ShowDialog(); }
    void OnActivate() override;
    /// Takes up what `CommPort` shows now.
    void ShowDialog();

 protected:
    void OnEscape() override { port_.cmdCancel(); }

 private:
    CommPort& port_;
    QComboBox* cboPort_;
    QComboBox* cboBitRate_;
    QLineEdit* txtStatus_;
    QLabel* lblAdvice_;
};

/// Shows and hides the dialog as the link asks for it, from now on.
void FollowPortDialog(House& house);

/// Brings the dialog up in front of all others, on first use with its loading, and returns when it has been hidden.
void ShowPortDialogModal(House& house);

}  // namespace kelvo
