#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/ReadingSource.h"

namespace kelvo {

/// Settings of the stability wait, as the analyst has them.
struct StabilitySettings {
    std::int16_t ASD = 1;       ///< below 1 off, 1 wait for the stable reading, 2 measure after a pre-set time
    std::int16_t ASDavg = 10;   ///< readings that must agree
    float Threshold = 0;        ///< largest less smallest of them; 0: only an unmoving reading is stable
    std::int16_t Waittime = 5;  ///< seconds before which nothing is stable
    std::int16_t Preset = 30;   ///< seconds of the pre-set time
};

/// Seconds since midnight, 0 to 86399.
int SecondsSinceMidnight(const DateTime& time);

/// Counts seconds by a clock that shows only the time of day. Midnight is passed over; a clock that is set, and a
/// machine that slept, add nothing, since no reading was taken meanwhile.
class SecondsCounter {
 public:
    /// Longest step between two looks that counts as time that has passed.
    static constexpr int LongestStep = 10;

    void Start(int secondsSinceMidnight);
    /// @return whether the time since the last look has been counted; false for a clock that jumped.
    bool Look(int secondsSinceMidnight);
    int Elapsed() const { return elapsed_; }

 private:
    int last_ = 0, elapsed_ = 0;
};

/// Decides when a reading is stable. `ASD` 1: at least `Waittime` seconds since the wait began, and the last
/// `ASDavg` displayed values within `Threshold` of one another. `ASD` 2: `Preset` seconds since the wait began.
/// Values count from the opening of the screen; a value shown while the interface is silent is no evidence and
/// empties the window, and so does a jump of the clock.
class StabilityWatch {
 public:
    using Verdict = ReadingSource::Verdict;

    /// The reading screen opens: no wait, an empty window.
    void Clear();
    /// The settings have been accepted anew: the window is empty, a running wait goes on.
    void ClearWindow() { ASDWindow_.clear(); }
    /// The wait begins: `ASDWaiting` 1.
    void Start(int secondsSinceMidnight);
    /// The value has been taken or the wait given up: `ASDWaiting` 0.
    void Stop();
    bool ASDWaiting() const { return waiting_; }

    /// One tick: the value as displayed, and whether the link is live.
    Verdict Tick(const StabilitySettings& settings, double displayed, bool live, int secondsSinceMidnight);

    /// "Pre-set time countdown: " and the seconds left while a pre-set time runs, else empty; ends at 0.
    std::string CountDown(const StabilitySettings& settings) const;

 private:
    bool Agree(const StabilitySettings& settings) const;

    bool waiting_ = false;
    SecondsCounter seconds_;
    std::deque<double> ASDWindow_;
};

}  // namespace kelvo
