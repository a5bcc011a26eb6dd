#pragma once

#include <QFont>
#include <array>
#include <initializer_list>
#include <vector>

#include "addition/AdditionPresenter.h"
#include "kit/AskedToOpen.h"
#include "kit/FormBinder.h"
#include "kit/Screen.h"
#include "link/SampleReadingPresenter.h"

class QAction;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;

namespace kelvo {

class EntryBox;

/// The screen of both addition methods, from top to bottom in the order of the work: sample, standard, slope,
/// potentials, result. `AdditionPresenter` decides; this shows what stands.
class frmAddition : public Screen, public AskedToOpen, public ReadingClient, private AdditionView {
    Q_OBJECT
 public:
    void OnLoad() override;
    void OnActivate() override;

    // --- client of the reading dialog ----------------------------------------------------------------------------
    bool TakesManySamples() const override { return false; }
    std::string ReadingPrompt() const override { return presenter_.ReadingPrompt(); }
    std::optional<std::string> CalibrationCelsius() const override { return presenter_.CalibrationCelsius(); }
    void ShowTemperature(const std::string& celsius, const std::string& fahrenheit) override;
    void ColourTemperature(int colour) override;
    void ShowReadingState(const ReadingState& state) override;
    void ShowSecondElectrode(float, bool) override {}
    void ShowNoSecondElectrode() override {}
    bool TakeSample(const std::string& millivolts) override;
    void SampleTaken() override {}
    void ReadingCancelled() override { presenter_.CancelReading(); }

    // --- for what outlives the session -------------------------------------------------------------------------
    const AdditionPresenter& Presenter() const { return presenter_; }
    AdditionPresenter& Presenter() { return presenter_; }
    void OpenAsked(OpensAsked what) override {
        what == OpensAsked::Table ? presenter_.OpenTable() : presenter_.OpenMeasurement();
    }

 protected:
    /// Names of the controls and captions of the boxes that differ between the methods.
    struct Names {
        const char *form, *tick, *button, *result, *comment;
        const char *suggestVolume, *actualVolume, *actualConcentration, *before, *after;
    };

    frmAddition(AppContext& context, const AdditionMethod& method, const Names& names);

    void OnEscape() override { presenter_.Escape(); }
    void OnFrameClose() override { presenter_.Exit(); }
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    // --- building ------------------------------------------------------------------------------------------------
    void BuildMenus();
    void BuildFileMenu();
    QAction* Item(QMenu* menu, const char* name, int index, const char* text, void (AdditionPresenter::*slot)());
    QGridLayout* Group(const char* caption, const char* name, int rows);
    void ShareWidth(QWidget& box) const;
    EntryBox* Box(int i, const QString& accessibleName);
    EntryBox* BoxAt(int i) const { return boxes_.at(static_cast<std::size_t>(i)); }
    QLabel* Caption(const char* text, QWidget* buddy);
    /// Boxes with their units from a column on.
    void Boxes(QGridLayout* grid, int row, int column, const char* caption,
               std::initializer_list<std::pair<int, const char*>> boxes);
    /// The same with the caption before them.
    void Field(QGridLayout* grid, int row, int column, const char* caption,
               std::initializer_list<std::pair<int, const char*>> boxes);
    void BuildSample();
    void BuildStandard();
    void BuildSlope();
    void BuildPotentials();
    void PinToFoot(QWidget* group);
    void BuildResult();
    void Arrange();

    // --- AdditionView --------------------------------------------------------------------------------------------
    void ShowState() override;
    void OpenReading() override;
    void Read() override;
    void CloseReading() override;
    void ShowTable() override;
    void AskSampleNumber() override;
    void ShowCalibrationSetup() override;
    void GoToMenu() override;
    void EndProgram() override;
    bool Ended() const override;

    /// What stands beside the boxes: ticks, date, comment, caption, menus, status.
    void ShowRest();
    void PrintTable();

    Names names_;
    AdditionPresenter presenter_;
    FormBinder binder_;
    std::array<EntryBox*, AdditionForm::BoxCount> boxes_{};
    std::array<QCheckBox*, 2> ticks_{};
    std::array<QPushButton*, 2> buttons_{};
    std::string doubt_;  ///< why the value of the reading dialog is not live
    std::vector<QGridLayout*> grids_;
    QFont letters_;
    int firstWidth_ = 0, secondWidth_ = 0;  ///< of the captions
    QComboBox* cmbIon_ = nullptr;
    QLabel *Label28_ = nullptr, *comment_ = nullptr;
    QAction *editAsd_ = nullptr, *printTable_ = nullptr;
};

}  // namespace kelvo
