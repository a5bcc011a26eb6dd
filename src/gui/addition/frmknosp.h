#pragma once

#include <array>

#include "addition/KnownSlopeForm.h"
#include "kit/Screen.h"

class QPushButton;

namespace kelvo {

class EntryBox;
class FormBinder;

/// " Known  Electrode  Slope": a slope typed by the analyst, with the temperature at which it holds.
class frmknosp : public Screen {
    Q_OBJECT
 public:
    explicit frmknosp(AppContext& context);
    void OnLoad() override;

 protected:
    /// The point typed before goes by "Cancel" alone: Escape and the frame lead to it.
    void OnEscape() override;

 private:
    void Ok();
    void Cancel();

    KnownSlopeForm form_;
    FormBinder* binder_;
    std::array<EntryBox*, 3> txtkslp_{};
    QPushButton* cmdcencel_ = nullptr;
};

}  // namespace kelvo
