#pragma once

#include <vector>

#include "calibration/CalibrationFollower.h"
#include "calibration/QualityPresenter.h"
#include "kit/Screen.h"

class QAction;
class QGridLayout;
class QLabel;
class QTableWidget;

namespace kelvo {

class PictureView;

/// "Calibration Quality": whether to go on with the calibration in use. Stays open beside the calibration screen and
/// follows what that does.
class frmQuality : public Screen, public CalibrationFollower {
    Q_OBJECT
 public:
    explicit frmQuality(AppContext& context);
    void OnLoad() override;
    void OnActivate() override;
    void CalibrationChanged() override;

 protected:
    void OnEscape() override;

 private:
    void BuildMenus();
    QWidget* BuildVerdict();
    QWidget* BuildFigures();
    QTableWidget* BuildPoints();
    void ShowPage();
    void ShowVerdict();
    void ShowFigures();
    void ShowPoints();
    void Print();
    void CopyFigures();
    void CopyPicture();

    QualityPresenter quality_;
    QAction *mnuLowEnd_ = nullptr, *mnuCharge_ = nullptr;
    QLabel *lblWord_ = nullptr, *lblReason_ = nullptr, *lblCauses_ = nullptr, *lblNext_ = nullptr;
    QGridLayout* figures_ = nullptr;
    std::vector<QLabel*> values_, beside_;
    PictureView* plot_ = nullptr;
    QTableWidget* points_ = nullptr;
};

}  // namespace kelvo
