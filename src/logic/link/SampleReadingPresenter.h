#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/StateOf.h"
#include "link/LiveReading.h"

namespace kelvo {

class Clock;
class Prompts;

/// A screen on whose behalf the reading dialog takes a sample: the boxes it lends to the dialog, and what it does
/// with the value. Screens that can be one implement it beside `Screen`.
class ReadingClient {
 public:
    virtual ~ReadingClient() = default;

    /// Direct potentiometry goes on to the next sample; the addition methods take one reading.
    virtual bool TakesManySamples() const = 0;
    /// What the dialog asks for, in whole; empty: the words for samples in turn.
    virtual std::string ReadingPrompt() const { return {}; }
    /// Temperature against which that of the sample is judged, °C as text; none: the working temperature.
    virtual std::optional<std::string> CalibrationCelsius() const { return std::nullopt; }
    /// °C and °F of the sample, as texts; a host with one box takes the first.
    virtual void ShowTemperature(const std::string& celsius, const std::string& fahrenheit) = 0;
    /// Background of the temperature boxes, a colour of the sixteen; 15 is none.
    virtual void ColourTemperature(int colour) = 0;
    /// Potential of electrode 2 where it stands for a pH electrode, and whether it is to be corrected to the
    /// temperature shown; without one the box shows "N/A".
    virtual void ShowSecondElectrode(float millivolts, bool correctTemperature) = 0;
    virtual void ShowNoSecondElectrode() = 0;
    /// What the values of this tick are worth: greys the boxes lent, where it is not live.
    virtual void ShowReadingState(const ReadingState&) {}
    /// The potential of this tick, mV as displayed; none while there is no live one.
    virtual void ShowLive(std::optional<float>) {}
    /// The sample's potential as displayed. @return false when a message has refused it and the dialog stays.
    virtual bool TakeSample(const std::string& millivolts) = 0;
    /// After `TakeSample`, while the link is stopped: the row of the table.
    virtual void SampleTaken() = 0;
    /// The dialog has been cancelled: the method's reading marks are cleared.
    virtual void ReadingCancelled() = 0;
};

/// The reading dialog `frmPtset` without its widgets.
class SampleReadingPresenter {
 public:
    /// @param client null when no method is in hand; the dialog then only shows the potential
    SampleReadingPresenter(StateOf<const IonSettings, const HardwareSettings, ReadingSettings> state, Prompts& prompts,
                           const Clock& clock, Link* link, ReadingClient* client)
        : ion_(state),
          hardware_(state),
          reading_(state),
          prompts_(prompts),
          link_(link),
          client_(client),
          live_(state, clock, link) {}

    void Load();
    /// The dialog comes back for the next of the readings that a client takes one by one: the value before is
    /// forgotten, and only a frame that comes from now on counts. Warnings already given are not repeated.
    void Resume();
    /// One tick of `Timer1`, 1000 ms.
    void Tick();
    /// `cmdset(0)`.
    enum class Press {
        Waits,    ///< the stability wait has begun, or there is nothing to take yet
        Refused,  ///< a message has refused the value
        Taken,    ///< the dialog hides; for many samples it comes back at once
    };
    Press Ok();
    /// `cmdset(1)`.
    void Cancel();
    /// "Average Setting" has set `ReadAvg`.
    void AverageSet() { live_.ResizeAverage(); }
    /// What `Text1` is worth now.
    ReadingState State() const { return live_.State(); }

    std::string Text1;       ///< mV
    std::string Label1;      ///< the hint
    bool hintIsRed = false;  ///< colour 12 while a wait runs
    std::string lblCntDown;
    bool correctPh = false;  ///< "ATC for pH"
    bool AtNow() const { return live_.Waiting() && !stable_; }
    ReadingClient* Client() const { return client_; }

 private:
    static constexpr int TickLimit = 32000;

    void SetHint();
    void ShowTemperature();
    void JudgeTemperature(float celsius);
    void Flash(int colour);
    void TakeReading();
    void FollowStability();
    void ShowWait();

    const IonSettings& ion_;
    const HardwareSettings& hardware_;
    ReadingSettings& reading_;
    Prompts& prompts_;
    Link* link_;
    ReadingClient* client_;
    LiveReading live_;
    bool TempWarned_ = false, TempFailed_ = false, stable_ = false, closed_ = false;
    bool flash_ = false;
    std::uint64_t awaited_ = 0;  ///< good frames that must have come before a value is taken
};

namespace text {
extern const char* const StableNow;
}  // namespace text

}  // namespace kelvo
