#pragma once

#include <array>

#include "kit/Screen.h"

class QPushButton;

namespace kelvo {

class EntryBox;

/// Asks for the name and the molecular weight of the user's own ion.
class frmInput : public Screen {
    Q_OBJECT
 public:
    explicit frmInput(AppContext& context);
    void OnActivate() override;

 protected:
    void OnEscape() override { Cancel(); }

 private:
    void Ok();
    void Cancel();
    std::array<EntryBox*, 2> txtInput_{};
    QPushButton* ok_;
};

}  // namespace kelvo
