#pragma once

#include <array>

#include "kit/Screen.h"
#include "ph/RecordingSetupPresenter.h"

class QAction;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace kelvo {

class EntryBox;

/// Sets up a pH calibration, or a continuous recording of pH or of an ISE. `RecordingSetupPresenter` decides; this
/// shows the panels of the step in hand and opens the screens that a step leads to.
class frmPHSe : public Screen {
    Q_OBJECT
 public:
    explicit frmPHSe(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override { Cancel(); }

 private:
    using Next = RecordingSetupPresenter::Next;

    void BuildMenus();
    QWidget* SettingsPage();
    QWidget* ChannelFrame(int electrode);
    QWidget* ChoicePage();
    QWidget* IsePage();
    QWidget* CalibrationPage();
    QGroupBox* CalibrationFrame(int electrode);
    QWidget* BufferSpin(int electrode);

    void ShowStage();
    void ShowLists();
    void ShowPeriods();
    void ShowChannels();
    void ShowCalibration();
    void FocusStage();

    void Ok();
    void Cancel();
    void Go(Next next);
    void Calibrate();
    void GoToMenu();
    void Exit();

    RecordingSetupPresenter setup_;
    Next afterLoad_ = Next::Stay;

    QWidget *settings_ = nullptr, *choice_ = nullptr, *calibration_ = nullptr;
    std::array<QWidget*, 3> Panelopt_{};
    std::array<QRadioButton*, 2> Opt_{}, optise_{};
    QGroupBox* frameISE_ = nullptr;
    std::array<QLabel*, 5> lbltxt_{};
    QComboBox *CmbTime_ = nullptr, *cmbX_ = nullptr, *cmbY_ = nullptr;
    std::array<QWidget*, 2> frm3DChl_{};
    std::array<std::array<QCheckBox*, 2>, 2> chk_{};
    std::array<QGroupBox*, 2> FrmChannel_{};
    std::array<std::array<QRadioButton*, 2>, 2> OptCali_{};
    std::array<QLabel*, 2> lblbf_{};
    std::array<EntryBox*, 2> txtbf_{};
    std::array<QWidget*, 2> Spinbf_{};
    QPushButton *cmdOK_ = nullptr, *cmdCancel_ = nullptr;
    QAction *mnuO_ = nullptr, *mnuH_ = nullptr;
};

}  // namespace kelvo
