#pragma once

#include <array>

#include "link/StabilityForm.h"
#include "platform/Screen.h"

class QLabel;
class QRadioButton;

namespace kelvo {

class EntryBox;

/// The settings of the automatic stability detection. `StabilityForm` decides.
class frmAutoD : public Screen {
    Q_OBJECT
 public:
    explicit frmAutoD(House& house);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override;

 private:
    QWidget* Row(int index, const char* caption);
    void Gather();
    void ShowForm();
    void FocusBox(int index);
    void Ok();

    StabilityForm form_;
    std::array<QRadioButton*, 2> OptAuto_{};
    std::array<EntryBox*, 4> txtAuto_{};
    std::array<QLabel*, 4> lblAuto_{};
    std::array<QPushButton*, 3> cmdAutoD_{};
};

}  // namespace kelvo
