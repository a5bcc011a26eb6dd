#pragma once

#include <array>

#include "calibration/StandardsPresenter.h"
#include "kit/Screen.h"
#include "link/OneReading.h"

class QTableWidget;

namespace kelvo {

class EntryBox;

/// "Standards": which of them count and why others do not, lot and uncertainty of them all, and blanks. Nothing is
/// taken before "Ok".
class frmStandards : public Screen, public OneReading {
    Q_OBJECT
 public:
    explicit frmStandards(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

    // --- client of the reading dialog ----------------------------------------------------------------------------
    std::string ReadingPrompt() const override { return "Please immerse the electrode in the blank,"; }
    bool TakeSample(const std::string& millivolts) override;

 protected:
    void OnEscape() override;

 private:
    static constexpr int RelativeU = 0, Lot = 1, Expires = 2, Blanks = 3, Boxes = 4;

    void TakeBoxes();
    void ShowAll();
    void ShowButtons();
    void LeaveOut();
    void TakeBack();
    void Read();
    void Ok();

    StandardsPresenter standards_;
    QTableWidget* list_ = nullptr;
    std::array<EntryBox*, Boxes> boxes_{};
    QLabel* lblBlanks_ = nullptr;
    QPushButton *leave_ = nullptr, *takeBack_ = nullptr, *read_ = nullptr;
};

}  // namespace kelvo
