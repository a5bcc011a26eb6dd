#pragma once

#include <array>

#include "kit/Screen.h"
#include "link/StabilityPresenter.h"

class QLabel;
class QRadioButton;

namespace kelvo {

class EntryBox;

/// The settings of the automatic stability detection. `StabilityPresenter` decides.
class frmAutoD : public Screen {
    Q_OBJECT
 public:
    explicit frmAutoD(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override;

 private:
    QWidget* Row(int index, const char* caption);
    void ReadWidgets();
    void ShowForm();
    void FocusBox(int index);
    void Ok();

    StabilityPresenter presenter_;
    std::array<QRadioButton*, 2> OptAuto_{};
    std::array<EntryBox*, 4> txtAuto_{};
    std::array<QLabel*, 4> lblAuto_{};
    std::array<QPushButton*, 3> cmdAutoD_{};
};

}  // namespace kelvo
