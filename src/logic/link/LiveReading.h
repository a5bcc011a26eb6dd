#pragma once

#include <string>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/ReadingSource.h"
#include "link/Averaging.h"
#include "link/Link.h"
#include "link/Stability.h"

namespace kelvo {

/// What every reading screen does on its tick: the latest frame through the rolling average, and the wait for a
/// stable value. One lives in each screen from its opening to its end.
class LiveReading : public ReadingSource {
 public:
    /// @param link null where no interface can be reached; then every value counts as live
    LiveReading(AppState& state, const Clock& clock, const Link* link) : state_(state), clock_(clock), link_(link) {}

    /// The screen opens: an average below 1 is raised to 1, windows are empty, no wait runs.
    void Open() override;
    /// The next tick is the first again: the window fills with what comes next.
    void Restart() { average_.Restart(); }
    /// `ReadAvg` has been set anew.
    void ResizeAverage() override { average_.Resize(state_.ReadAvg); }
    /// The stability settings have been accepted anew.
    void SettingsAccepted() override { watch_.ClearWindow(); }

    /// Takes the latest frame. @return false when none has come since the link was started, or when a screen that
    /// waits for data has to leave this tick uncounted.
    bool Take(ReadingAverage::FirstTick firstTick);
    bool Take() override { return Take(ReadingAverage::FirstTick::Takes); }
    /// The tick is done.
    void Count() override { ++average_.ReadTick; }
    int Tick() const { return average_.ReadTick; }
    float Average(int channel) const { return average_.AvgReading[static_cast<std::size_t>(channel)]; }
    /// Potential of electrode 1 as the screens show it, "#0.00".
    std::string MvText() const override;
    /// Degrees of sensor 1; below 0: not connected.
    float Celsius() const override { return SensorToCelsius(state_.Sensor, Average(1)); }

    bool Waiting() const { return watch_.ASDWaiting(); }
    /// The accept button under `ASD` above 0: the first press starts the wait.
    void StartWait() override { watch_.Start(SecondsNow()); }
    void StopWait() { watch_.Stop(); }
    /// Once a tick, with the value as displayed.
    Verdict Judge(const std::string& displayed) override;
    std::string CountDown() const override { return watch_.CountDown(Settings()); }

 private:
    int SecondsNow() const { return SecondsSinceMidnight(clock_.Now()); }
    StabilitySettings Settings() const;

    AppState& state_;
    const Clock& clock_;
    const Link* link_;
    ReadingAverage average_;
    StabilityWatch watch_;
};

}  // namespace kelvo
