#pragma once

#include <string>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/FormModel.h"

namespace kelvo {

/// A slope typed by the analyst, as the dialog `frmknosp` takes it: boxes 0 slope (mV per decade), 1 the temperature
/// at which it holds (°C), 2 the same in °F.
class KnownSlopeForm : public FormModel {
 public:
    static constexpr int Slope = 0, Celsius = 1, Fahrenheit = 2;
    static constexpr int OkButton = FirstButton;

    KnownSlopeForm(CalibrationState& state, Prompts& prompts) : FormModel(3, prompts), state_(state) {}

    /// Empties the slope and offers the working temperature; no temperature known leaves both boxes empty.
    void Begin();

    void Enter(int i) override;
    bool KeyAllowed(int i, char32_t key) const override;
    void KeyRefused(int i) override;

    /// "OK": with text in all boxes hands slope and temperature over. @return whether the dialog is to hide.
    bool Ok();
    /// "Cancel".
    void Cancel() { state_.ReadingActive = false; }
    /// A quiet line on a slope that no sample can be measured with, empty when there is nothing.
    std::string StatusMessage() const;

 private:
    /// Says that box i is out of range; a number that no 32 bits hold gives way to what stood there before. @return
    /// false
    bool Refuse(int i);

    CalibrationState& state_;
    std::pair<std::string, std::string> offered_;  ///< °C and °F last offered or taken
};

}  // namespace kelvo
