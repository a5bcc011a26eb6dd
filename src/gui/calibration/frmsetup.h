#pragma once

#include <array>

#include "calibration/CaliSetup.h"
#include "calibration/CalibrationEntry.h"
#include "kit/Screen.h"

class QAction;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QToolButton;

namespace kelvo {

class EntryBox;
class PictureView;

/// "Calibration Setup": scales, ion, number of points and how data arrive; `CaliSetup` decides, and
/// `CalibrationEntry` runs the entry of all points.
class frmsetup : public Screen {
    Q_OBJECT
 public:
    explicit frmsetup(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;

 protected:
    void OnEscape() override { entry_.Cancel(); }

 private:
    QGroupBox* GraphFrame();
    QGroupBox* ModeFrame();
    QGroupBox* StabilityFrame();
    void BuildMenus();
    QWidget* Spin();
    void ShowTicks();
    void ShowSpin();
    void IonChosen(int index);
    void FillLogC();
    void ShowPreview();
    void Ok();

    CaliSetup setup_;
    CalibrationEntry entry_;
    QComboBox* cmbspE_ = nullptr;
    QComboBox* CmbspC_ = nullptr;
    QComboBox* cmbspion_ = nullptr;
    EntryBox* txtspin_ = nullptr;
    std::array<QCheckBox*, 3> chkdat_{};
    QAction* editAsd_ = nullptr;
    DisplayList preview_;
    PictureView* picPreview_ = nullptr;
};

}  // namespace kelvo
