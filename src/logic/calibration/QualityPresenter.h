#pragma once

#include "calibration/CalibrationState.h"
#include "calibration/QualityLimits.h"
#include "calibration/QualityPage.h"
#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// The window "Calibration Quality" without its widgets: what it shows of the calibration in use, read anew when that
/// changes.
class QualityPresenter {
 public:
    QualityPresenter(StateOf<CalibrationState, const Paths> state, Prompts& prompts)
        : state_(state), calibration_(state), paths_(state), prompts_(prompts) {}

    /// The window opens: reads the limits and, for a custom ion whose charge was never given, asks for it once. A
    /// cancelled question leaves the slope without its judgement.
    void Open();
    /// The calibration may have changed. @return whether it has, so that there is something new to show
    bool Refresh();
    /// Shows or hides the fit for low concentrations.
    void ShowLowEnd(bool shown);
    bool LowEndShown() const { return lowEnd_ && page_.lowEndPossible; }
    /// Only a custom ion has a charge that the analyst gives.
    bool HasOwnCharge() const { return calibration_.IonIndex == CustomIonRow; }
    void ChangeCharge();

    const QualityPage& Page() const { return page_; }
    std::string CopyText() const { return QualityText(page_); }

 private:
    void AskCharge();
    void Make();

    StateOf<CalibrationState, const Paths> state_;
    CalibrationState& calibration_;
    const Paths& paths_;
    Prompts& prompts_;
    QualityLimits limits_;
    QualityPage page_;
    CalibrationData shown_;
    int charge_ = 0;        ///< of the custom ion, 0 not known
    std::string chargeOf_;  ///< name of the ion that it was given for
    bool lowEnd_ = false;
};

}  // namespace kelvo
