#pragma once

#include <array>

#include "addition/SeriesForm.h"
#include "core/UnsavedWork.h"
#include "kit/FormBinder.h"
#include "kit/Screen.h"
#include "link/OneReading.h"

class QLabel;
class QPushButton;

namespace kelvo {

class AdditionPresenter;
class EntryBox;
class PictureView;

/// "Several Additions": one to ten additions into one solution, Gran's plot and the result with its interval. It begins
/// with what the screen of the method holds and gives its row to that screen's table.
class frmAdditions : public Screen, public OneReading {
    Q_OBJECT
 public:
    explicit frmAdditions(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void OnUnload() override;

    // --- client of the reading dialog ----------------------------------------------------------------------------
    std::string ReadingPrompt() const override;
    std::optional<std::string> CalibrationCelsius() const override;
    bool TakeSample(const std::string& millivolts) override;

 protected:
    void OnEscape() override;

 private:
    void BuildMenus();
    QWidget* BuildStart();
    QWidget* BuildAdditions();
    QWidget* BuildOutcome();
    EntryBox* Box(int i, const QString& name);
    void ShowRest();
    void New();
    void Open();
    void Save();
    void Print();
    void Plan();
    void Read();
    void SaveRow();
    AdditionPresenter* Method() const;

    SeriesForm form_;
    FormBinder binder_;
    std::array<EntryBox*, SeriesForm::Boxes> boxes_{};
    std::array<QLabel*, SeriesForm::Additions + 1> residuals_{};
    QLabel *lblResult_ = nullptr, *lblRemarks_ = nullptr, *lblBudget_ = nullptr;
    QPushButton* read_ = nullptr;
    QAction *mnuFit_ = nullptr, *mnuSaveRow_ = nullptr;
    DisplayList plot_;
    PictureView* picture_ = nullptr;
    std::string told_;
    std::string kept_;  ///< the boxes as they were saved, opened or given to the table last
    int readInto_ = -1;
    UnsavedWork::Registration unsaved_;
};

}  // namespace kelvo
