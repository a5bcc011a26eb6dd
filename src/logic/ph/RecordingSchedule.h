#pragma once

#include "ph/RecordingPlan.h"

namespace kelvo {

/// When the points of a recording fall due, on a clock that never jumps. Ticks lie on a fixed grid from the moment of
/// the start, so that a late tick delays no later one and the run does not drift: 201 points every 2 s take 402 s.
/// Ticks that were slept through (a suspended machine) are not made up for, the grid stays.
///
/// A stop keeps the ticks already counted; the part of a tick that had passed is lost, as with a timer switched off and
/// on again.
class RecordingSchedule {
 public:
    void Begin(const RecordingInterval& interval);
    /// The next tick comes a whole tick after `now`, seconds.
    void Run(double now);
    void Stop() { running_ = false; }
    bool Running() const { return running_; }
    /// Moment of the next tick, for whoever wakes the schedule.
    double NextTick() const { return next_; }

    /// What has fallen due.
    struct Due {
        int ticks = 0;
        bool point = false;  ///< a point is to be taken now
        int missed = 0;      ///< points before it that nobody took
        double late = 0;     ///< seconds that the point is behind its moment
    };
    Due Take(double now);
    /// Seconds from `now` to the next point.
    double ToPoint(double now) const { return next_ + (divider_ - count_) * tick_ - now; }

 private:
    double tick_ = 2, next_ = 0;
    int divider_ = 0, count_ = 0;
    bool running_ = false;
};

/// Seconds that the machine has slept since it was started; only differences count.
double SleptSeconds();

}  // namespace kelvo
