#pragma once

#include <array>
#include <string>
#include <utility>

#include "core/FormModel.h"
#include "core/StateOf.h"

namespace kelvo {

/// One calibration point as the dialog `fmpaidat` takes it: boxes 0 potential (mV), 1 ppm, 2 mol/L, 3 LogC, 4 °C,
/// 5 °F. A concentration typed in any unit fills the other two. Temperatures are asked for at the first point only.
class PointForm : public FormModel {
 public:
    static constexpr int Potential = 0, Ppm = 1, Molar = 2, LogC = 3, Celsius = 4, Fahrenheit = 5;
    static constexpr int OkButton = FirstButton, CancelButton = FirstButton + 1;

    PointForm(StateOf<CalibrationState, HardwareSettings> state, Prompts& prompts)
        : FormModel(6, prompts), state_(state), calibration_(state), hardware_(state) {}

    /// Empties the boxes for point `state.CurrentPoint` and offers the working temperature where it applies.
    void Begin();

    void Enter(int i) override;
    bool KeyAllowed(int i, char32_t key) const override;
    void KeyRefused(int i) override;

    /// "OK": stores the point when the boxes 0 to 3 hold text, else helps to complete it.
    /// @return whether the point is stored and the dialog is to close
    bool Ok();
    /// "Cancel": ends the entry of the whole calibration.
    void Cancel();

    /// Whether "Cancel" would throw away something that was typed.
    bool HoldsEntries() const;

    bool TemperatureShown() const { return At(Celsius).visible; }
    /// Whether "Default value: change if you wish" stands beside the temperature.
    bool DefaultHintShown() const { return defaultHint_; }
    /// A quiet line on what is still missing or may mislead, empty when there is nothing.
    std::string StatusMessage() const;

    /// The analyst has entered a concentration and the measurement of it is to start (on-line readings only).
    bool TakeMeasurementStart();
    /// The measurement has begun: the potential comes into sight, read and not typed.
    void BeginMeasurement();
    /// A tick's potential, as the box shows it.
    void Measured(std::string millivolts) { Set(Potential, std::move(millivolts)); }
    /// A tick's temperature, from a sensor that works; the working temperature follows it.
    void MeasuredTemperature(float celsius);

 private:
    void EnterConcentration(int i);
    void FillOtherUnits(int i, double value);
    void FocusAfterConcentration();
    /// Fills the other unit; a number that no 32 bits hold is told and gives way to what stood there before.
    bool ConvertTemperature(int i);
    bool TemperatureFits();
    bool ConcentrationEmpty() const;
    void Store();
    void Incomplete(const std::string& title);

    StateOf<CalibrationState, HardwareSettings> state_;
    CalibrationState& calibration_;
    HardwareSettings& hardware_;
    /// The three concentrations as they belong together since the last Enter; the first is empty before it.
    std::array<std::string, 3> filled_;
    std::pair<std::string, std::string> temperature_;  ///< °C and °F as they were converted last
    bool workedOutAgain_ = false;                      ///< "OK" has replaced concentrations that stood
    bool defaultHint_ = false;
    bool startMeasurement_ = false;
};

}  // namespace kelvo
