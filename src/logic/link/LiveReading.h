#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/ReadingSettings.h"
#include "core/ReadingSource.h"
#include "core/Tables.h"
#include "link/Averaging.h"
#include "link/Link.h"
#include "link/ReadingState.h"
#include "link/Stability.h"
#include "link/SteadyWatch.h"

namespace kelvo {

class Clock;

/// What every reading screen does on its tick: the latest frame through the rolling average, what the value is worth,
/// and the wait for a stable one. One lives in each screen from its opening to its end. A tick goes:
///
///     if (live.Take()) { ... show live.Average(0) ...; live.Judge(box text); live.Count(); }
///     show live.State()
///
/// The state is shown on every tick, taken or not (`ShowReadingState` in a window): it is what tells a measurement
/// from a value that is old, half averaged or not there.
class LiveReading : public ReadingSource {
 public:
    /// @param link null where no interface can be reached; then every value counts as live
    LiveReading(ReadingSettings& reading, const Clock& clock, const Link* link)
        : reading_(reading), clock_(clock), link_(link) {}

    /// The screen opens: an average below 1 is raised to 1, windows are empty, no wait runs.
    void Open() override;
    /// The next tick is the first again: the window fills with what comes next.
    void Restart();
    /// `ReadAvg` has been set anew.
    void ResizeAverage() override;
    /// The stability settings have been accepted anew.
    void SettingsAccepted() override { watch_.ClearWindow(); }

    /// Takes the latest frame through the channels of that range, all four unless told. @return false when none has
    /// come since the link was started, or when a screen that waits for data has to leave this tick uncounted.
    bool Take(ReadingAverage::FirstTick firstTick, int firstChannel = 0, int lastChannel = 3);
    bool Take() override { return Take(ReadingAverage::FirstTick::Takes); }
    /// What the values of the last `Take` are worth now, at the end of a tick.
    /// @param electrode channel whose potential is judged for its steadiness: 0 or 2
    ReadingState State(int electrode = 0) const;
    /// The tick is done.
    void Count() override { ++average_.ReadTick; }
    int Tick() const { return average_.ReadTick; }
    float Average(int channel) const { return average_.AvgReading[static_cast<std::size_t>(channel)]; }
    /// Potential of electrode 1 as the screens show it, "#0.00".
    std::string MvText() const override;
    /// Degrees of sensor 1; below 0: not connected.
    float Celsius() const override { return SensorToCelsius(StandardSensor(), Average(1)); }

    bool Waiting() const { return watch_.ASDWaiting(); }
    /// The accept button under `ASD` above 0: the first press starts the wait.
    void StartWait() override;
    void StopWait() { watch_.Stop(); }
    /// Once a tick, with the value as displayed. A value that was stable may be `Waiting` again on a later tick.
    Verdict Judge(const std::string& displayed) override;
    std::string CountDown() const override { return watch_.CountDown(Settings()); }

 private:
    FrameMark Frame() const;
    void Watch(const FrameMark& frame);
    void ClearSteady();
    StabilitySettings Settings() const;

    ReadingSettings& reading_;
    const Clock& clock_;
    const Link* link_;
    ReadingAverage average_;
    StabilityWatch watch_;
    std::array<SteadyWatch, 2> steady_;  ///< of electrodes 1 and 2
    std::uint64_t watchedFrame_ = 0;     ///< the frame that `steady_` has taken last
    double takenFrom_ = 0;               ///< when the frame of the last `Take` came
};

}  // namespace kelvo
