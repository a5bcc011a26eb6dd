#pragma once

#include <QGroupBox>
#include <array>
#include <string>

#include "calibration/Potentiometry.h"

class QGridLayout;
class QLabel;

namespace kelvo {

class EntryBox;

/// The sample boxes of the calibration screen: `txtT(0..6)` with `LabelL(0..11)`.
class SampleBoxes : public QGroupBox {
    Q_OBJECT
 public:
    explicit SampleBoxes(QWidget* parent = nullptr);

    /// Shows or hides boxes and labels.
    void Show(bool shown);
    void Empty();
    void SetText(int i, const std::string& text);
    std::array<std::string, 7> Texts() const;
    void SetResult(const SampleResult& result);
    EntryBox* Box(int i) const { return txtT_[static_cast<std::size_t>(i)]; }

 signals:
    void PotentialEntered();

 private:
    void AddRow(QGridLayout* grid, int row, int left, int box, int unit);

    std::array<EntryBox*, 7> txtT_{};
    std::array<QLabel*, 12> LabelL_{};
};

}  // namespace kelvo
