#pragma once

#include "kit/Screen.h"

class QPlainTextEdit;
class QPushButton;

namespace kelvo {

/// The opening box, and the about box of every Help menu. Its button reads "Start" when the program opens, and leads
/// to the start screen; from a menu it reads "Ok" and only closes.
class frmNorvak : public Screen {
    Q_OBJECT
 public:
    explicit frmNorvak(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override;

 private:
    void Pressed();

    QPlainTextEdit* details_;
    QPushButton* copy_;
    QPushButton* cmdOK_;
};

}  // namespace kelvo
