#pragma once

#include <string>

#include "calibration/EntryState.h"
#include "calibration/PointForm.h"
#include "core/ReadingSource.h"
#include "core/StateOf.h"

namespace kelvo {

/// A calibration point on line: the potential comes from the interface, tick by tick. Works on the form of the point
/// dialog and holds what stands beside it: hint, count-down, the caption of the button.
class PointReading {
 public:
    PointReading(StateOf<EntryState, const HardwareSettings, ReadingSettings> state, Prompts& prompts, PointForm& form,
                 ReadingSource& live)
        : state_(state),
          entry_(state),
          hardware_(state),
          reading_(state),
          prompts_(prompts),
          form_(form),
          live_(live) {}

    /// The dialog opens.
    void Open();
    /// A concentration has been entered: the potential comes into sight and, with `ASD` above 0, the wait begins.
    void StartMeasurement();
    /// One tick of `Timer1`, 500 ms.
    void Tick();
    /// "Average Setting", "Edit ASD".
    void AskAverage();
    void StabilitySet() { live_.SettingsAccepted(); }

    const std::string& Hint() const { return hint_; }            ///< `labelmsg`
    bool HintIsRed() const { return hintIsRed_; }                ///< while a wait runs
    const std::string& CountDown() const { return countDown_; }  ///< `lblCntDown`
    /// Caption of `cmdok`: "Now" while a wait runs.
    const char* OkCaption() const { return entry_.PointRunning == 1 ? "Now" : "OK"; }

 private:
    void TakeTemperature();
    void FollowStability();
    void ShowWait();
    void SetHint(const char* text, bool red);

    StateOf<EntryState, const HardwareSettings, ReadingSettings> state_;
    EntryState& entry_;
    const HardwareSettings& hardware_;
    ReadingSettings& reading_;
    Prompts& prompts_;
    PointForm& form_;
    ReadingSource& live_;
    std::string hint_, countDown_;
    bool hintIsRed_ = false;
};

}  // namespace kelvo
