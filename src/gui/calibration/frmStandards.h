#pragma once

#include <array>

#include "calibration/StandardsPresenter.h"
#include "kit/Screen.h"
#include "link/SampleReadingPresenter.h"

class QTableWidget;

namespace kelvo {

class EntryBox;

/// "Standards": which of them count and why others do not, lot and uncertainty of them all, and blanks. Nothing is
/// taken before "Ok".
class frmStandards : public Screen, public ReadingClient {
    Q_OBJECT
 public:
    explicit frmStandards(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

    // --- client of the reading dialog ----------------------------------------------------------------------------
    bool TakesManySamples() const override { return false; }
    std::string ReadingPrompt() const override { return "Please immerse the electrode in the blank,"; }
    void ShowTemperature(const std::string&, const std::string&) override {}
    void ColourTemperature(int) override {}
    void ShowSecondElectrode(float, bool) override {}
    void ShowNoSecondElectrode() override {}
    bool TakeSample(const std::string& millivolts) override;
    void SampleTaken() override {}
    void ReadingCancelled() override {}
    void ShowReadingState(const ReadingState& state) override;

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
    std::string doubt_;
};

}  // namespace kelvo
