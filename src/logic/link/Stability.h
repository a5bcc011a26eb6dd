#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "core/ReadingSource.h"
#include "link/Link.h"

namespace kelvo {

/// Settings of the stability wait, as the analyst has them.
struct StabilitySettings {
    std::int16_t ASD = 1;       ///< below 1 off, 1 wait for the stable reading, 2 measure after a pre-set time
    std::int16_t ASDavg = 10;   ///< readings that must agree
    float Threshold = 0;        ///< largest less smallest of them; 0: only an unmoving reading is stable
    std::int16_t Waittime = 5;  ///< seconds before which nothing is stable
    std::int16_t Preset = 30;   ///< seconds of the pre-set time
};

/// What one tick of a reading screen knows.
struct StabilityTick {
    double displayed = 0;  ///< the value as the box shows it
    FrameMark frame;       ///< the frame it stems from
    bool live = false;     ///< it is a measurement: neither stale nor half averaged
    double seconds = 0;    ///< of the steady clock
};

/// Decides when a reading is stable. `ASD` 1: at least `Waittime` seconds since the wait began, and the values of the
/// last `ASDavg` frames, all since the wait began, within `Threshold` of one another; a later one that leaves the
/// threshold withdraws it. `ASD` 2: `Preset` seconds since the wait began, while a live value stands. Several ticks may
/// show one frame; it counts once. A frame that comes late, silence and a lost port empty the window, and a late frame
/// is no evidence itself. Seconds are whole ones that have passed, by a clock that nobody sets.
class StabilityWatch {
 public:
    using Verdict = ReadingSource::Verdict;

    /// The reading screen opens: no wait.
    void Clear() { waiting_ = false; }
    /// The settings have been accepted anew: the window is empty, a running wait goes on.
    void ClearWindow() { ASDWindow_.clear(); }
    /// The wait begins: `ASDWaiting` 1. @param frame the frame that is shown now: later ones count
    void Start(const FrameMark& frame, double seconds);
    /// The value has been taken or the wait given up: `ASDWaiting` 0.
    void Stop() { waiting_ = false; }
    bool ASDWaiting() const { return waiting_; }

    Verdict Tick(const StabilitySettings& settings, const StabilityTick& tick);

    /// "Pre-set time countdown: " and the seconds left while a pre-set time runs, else empty; ends at 0.
    std::string CountDown(const StabilitySettings& settings) const;

 private:
    void Collect(const StabilityTick& tick);
    bool Agree(const StabilitySettings& settings) const;

    bool waiting_ = false;
    double ASDStart_ = 0;
    int elapsed_ = 0;
    std::uint64_t lastFrame_ = 0;
    std::deque<double> ASDWindow_;
};

}  // namespace kelvo
