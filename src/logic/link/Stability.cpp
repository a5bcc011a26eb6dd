#include "link/Stability.h"

#include <algorithm>

namespace kelvo {
namespace {

constexpr int Day = 24 * 60 * 60;
constexpr std::size_t LongestWindow = 30;

}  // namespace

int SecondsSinceMidnight(const DateTime& time) {
    return (time.hour * 60 + time.minute) * 60 + time.second;
}

void SecondsCounter::Start(int secondsSinceMidnight) {
    last_ = secondsSinceMidnight;
    elapsed_ = 0;
}

bool SecondsCounter::Look(int secondsSinceMidnight) {
    int step = secondsSinceMidnight - last_;
    if (step < -Day / 2) step += Day;
    last_ = secondsSinceMidnight;
    if (step < 0 || step > LongestStep) return false;
    elapsed_ += step;
    return true;
}

void StabilityWatch::Clear() {
    waiting_ = false;
    ASDWindow_.clear();
}

void StabilityWatch::Start(int secondsSinceMidnight) {
    waiting_ = true;
    seconds_.Start(secondsSinceMidnight);
}

void StabilityWatch::Stop() {
    waiting_ = false;
}

bool StabilityWatch::Agree(const StabilitySettings& settings) const {
    const auto wanted = static_cast<std::size_t>(std::clamp<int>(settings.ASDavg, 1, LongestWindow));
    if (ASDWindow_.size() < wanted) return false;
    const auto [least, largest] =
        std::minmax_element(ASDWindow_.end() - static_cast<std::ptrdiff_t>(wanted), ASDWindow_.end());
    // In the width of the threshold: 0.03 less 0.01 must be within a threshold of 0.02.
    return static_cast<float>(*largest - *least) <= settings.Threshold;
}

StabilityWatch::Verdict StabilityWatch::Tick(const StabilitySettings& settings, double displayed, bool live,
                                             int secondsSinceMidnight) {
    const bool counted = !waiting_ || seconds_.Look(secondsSinceMidnight);
    if (!counted || !live) ASDWindow_.clear();
    if (live) ASDWindow_.push_back(displayed);
    if (ASDWindow_.size() > LongestWindow) ASDWindow_.pop_front();
    if (!waiting_) return Verdict::NotWaiting;
    const bool stable = settings.ASD == 2 ? seconds_.Elapsed() >= settings.Preset
                                          : seconds_.Elapsed() >= settings.Waittime && Agree(settings);
    return stable ? Verdict::Stable : Verdict::Waiting;
}

std::string StabilityWatch::CountDown(const StabilitySettings& settings) const {
    if (!waiting_ || settings.ASD != 2) return {};
    return "Pre-set time countdown: " + std::to_string(std::max(0, settings.Preset - seconds_.Elapsed()));
}

}  // namespace kelvo
