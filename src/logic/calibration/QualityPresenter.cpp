#include "calibration/QualityPresenter.h"

#include "calibration/CalibrationState.h"
#include "calibration/CustomCharge.h"
#include "core/Paths.h"

namespace kelvo {

void QualityPresenter::Open() {
    limits_ = ReadQualityLimits(paths_.IniPath);
    chargeOf_ = calibration_.Ions.names[CustomIonRow];
    charge_ = CustomCharge(state_);
    if (HasOwnCharge() && calibration_.CaliPoints > 0 && charge_ == 0) AskCharge();
    Make();
}

void QualityPresenter::AskCharge() {
    const int charge = AskCustomCharge(state_, prompts_, charge_);
    if (charge != 0) charge_ = charge;
}

void QualityPresenter::Make() {
    shown_ = CalibrationDataOf(calibration_);
    if (chargeOf_ != calibration_.Ions.names[CustomIonRow]) {
        chargeOf_ = calibration_.Ions.names[CustomIonRow];
        charge_ = CustomCharge(state_);
    }
    page_ = MakeQualityPage({shown_, limits_, charge_}, lowEnd_);
}

bool QualityPresenter::Refresh() {
    if (CalibrationDataOf(calibration_) == shown_) return false;
    Make();
    return true;
}

void QualityPresenter::ShowLowEnd(bool shown) {
    lowEnd_ = shown;
    Make();
}

void QualityPresenter::ChangeCharge() {
    if (!HasOwnCharge()) return;
    AskCharge();
    Make();
}

}  // namespace kelvo
