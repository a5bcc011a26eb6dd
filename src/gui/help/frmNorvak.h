#pragma once

#include "kit/Screen.h"

class QHBoxLayout;
class QPushButton;

namespace kelvo {

/// The opening box, and the about box of every Help menu. Its button reads "Start" when the program opens, and leads
/// to the start screen; from a menu it reads "Ok" and only closes.
class frmNorvak : public Screen {
    Q_OBJECT
 public:
    explicit frmNorvak(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override;

 private:
    /// Versions and folders, with a button that copies them. The start does without, and is there sooner.
    void AddDetails(QHBoxLayout& foot);
    void Pressed();

    QPushButton* cmdOK_;
};

}  // namespace kelvo
