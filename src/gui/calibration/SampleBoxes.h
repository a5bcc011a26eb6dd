#pragma once

#include <QGroupBox>
#include <array>

#include "calibration/SampleForm.h"

class QGridLayout;
class QLabel;

namespace kelvo {

class EntryBox;
class FormBinder;

/// The sample boxes of the calibration screen: `txtT(0..6)` with `LabelL(0..11)`. `SampleForm` decides.
class SampleBoxes : public QGroupBox {
    Q_OBJECT
 public:
    explicit SampleBoxes(SampleForm& form, QWidget* parent = nullptr);

    /// Shows the form as it stands.
    void ShowForm();
    EntryBox* Box(int i) const { return txtT_[static_cast<std::size_t>(i)]; }

 private:
    void AddRow(QGridLayout* grid, int row, int left, int box, int unit);

    SampleForm& form_;
    FormBinder* binder_;
    std::array<EntryBox*, SampleForm::Boxes> txtT_{};
    std::array<QLabel*, 12> LabelL_{};
    QLabel *lblNext_ = nullptr, *lblInterval_ = nullptr, *lblLive_ = nullptr;
    int colour_ = SampleForm::NoColour;
};

}  // namespace kelvo
