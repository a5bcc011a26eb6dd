#pragma once

#include <string>

#include "core/FormModel.h"
#include "core/StateOf.h"
#include "core/TemperatureText.h"
#include "link/LiveReading.h"

namespace kelvo {

/// One buffer of a pH calibration as the dialog `frmPset` takes it: boxes 0 the buffer's pH, 1 mV, 2 °C, 3 °F. The
/// potential is read; a temperature is read where the channel has a sensor and typed where it has none. What stands
/// in the boxes when OK is pressed goes to `txtph`.
class BufferForm : public FormModel {
 public:
    static constexpr int Ph = 0, Mv = 1, Celsius = 2, Fahrenheit = 3;
    static constexpr int OkButton = FirstButton, CancelButton = FirstButton + 1;

    /// @param link null where no interface can be reached
    BufferForm(StateOf<PhCalibration, PhEntry, const HardwareSettings, ReadingSettings> state, Prompts& prompts,
               const Clock& clock, const Link* link)
        : FormModel(4, prompts),
          state_(state),
          phCalibration_(state),
          phEntry_(state),
          hardware_(state),
          live_(state, clock, link) {}

    /// The dialog opens for the electrode `PhElectrode`.
    void Load();
    /// One tick of `Timer1`, 1000 ms.
    void Tick();

    /// A temperature that is none is told, and the one before stands again.
    void Enter(int i) override;
    void Left(int i) override;
    bool KeyAllowed(int, char32_t) const override { return true; }
    void KeyRefused(int) override {}

    /// "OK": hands the boxes over. @return false before the first reading of this buffer, which OK waits for, and when
    /// a box holds a number that is none, told in a message
    bool Ok();
    /// "Cancel": `PhCancelled` -1.
    void Cancel();
    void AverageSet() { live_.ResizeAverage(); }

    /// Whether the temperature may be typed, and "Default Value: Change if you wish" stands beside it.
    bool TypedTemperature() const { return sensor_ == NoSensor; }
    /// What the values are worth just now.
    ReadingState Worth() const;
    /// A quiet line on what will be taken otherwise than it looks, empty when there is nothing.
    std::string Remark() const;

 private:
    static constexpr int NoSensor = -1;
    static constexpr int TickLimit = 32000;

    bool First() const { return electrode_ == 1; }
    /// Fills the other unit. @return false when it is no temperature: the one before stands again
    bool TakeTemperature(int box);
    bool IsTaken(int box) const;
    void Refuse(int box);

    StateOf<PhCalibration, PhEntry, const HardwareSettings, ReadingSettings> state_;
    PhCalibration& phCalibration_;
    PhEntry& phEntry_;
    const HardwareSettings& hardware_;
    LiveReading live_;
    int electrode_ = 1;
    int sensor_ = NoSensor;  ///< channel of the frame that tells the temperature
    bool closed_ = false;
    bool early_ = false;     ///< OK was pressed before the first reading
    TemperaturePair taken_;  ///< the temperature as it was last taken
    std::string refused_;    ///< a text that was left and is no temperature
};

}  // namespace kelvo
