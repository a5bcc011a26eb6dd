#include "ph/RecordingSchedule.h"

#include <time.h>

#include <cmath>

namespace kelvo {
namespace {

/// A timer of the event loop may wake a little before its time.
constexpr double Slack = 0.005;

}  // namespace

void RecordingSchedule::Begin(const RecordingInterval& interval) {
    tick_ = interval.timerMs / 1000.0;
    divider_ = interval.divider;
    count_ = 0;
    running_ = false;
}

void RecordingSchedule::Run(double now) {
    next_ = now + tick_;
    running_ = true;
}

RecordingSchedule::Due RecordingSchedule::Take(double now) {
    Due due;
    if (!running_ || now + Slack < next_) return due;
    due.ticks = 1 + static_cast<int>(std::floor((now + Slack - next_) / tick_));
    const double first = next_;
    next_ += due.ticks * tick_;
    const int reached = count_ + due.ticks;
    const int points = reached / (divider_ + 1);
    if (points > 0) due.late = now - first - (points * (divider_ + 1) - count_ - 1) * tick_;
    count_ = reached % (divider_ + 1);
    due.point = points > 0;
    due.missed = points > 1 ? points - 1 : 0;
    return due;
}

double SleptSeconds() {
    const auto seconds = [](clockid_t clock) {
        timespec now{};
        ::clock_gettime(clock, &now);
        return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
    };
    // One of the two clocks runs through sleep, the other does not.
    return seconds(CLOCK_BOOTTIME) - seconds(CLOCK_MONOTONIC);
}

}  // namespace kelvo
