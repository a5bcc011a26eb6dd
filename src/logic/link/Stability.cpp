#include "link/Stability.h"

#include <algorithm>

namespace kelvo {
namespace {

constexpr std::size_t LongestWindow = 30;

}  // namespace

void StabilityWatch::Start(const FrameMark& frame, double seconds) {
    waiting_ = true;
    ASDStart_ = seconds;
    elapsed_ = 0;
    lastFrame_ = frame.number;
    ASDWindow_.clear();
}

void StabilityWatch::Collect(const StabilityTick& tick) {
    if (!tick.live) ASDWindow_.clear();
    if (tick.frame.number != lastFrame_ && tick.live) ASDWindow_.push_back(tick.displayed);
    lastFrame_ = tick.frame.number;
    // What stands before a late frame goes, though others may have followed that one since the last tick.
    const std::size_t most = std::min<std::uint64_t>(LongestWindow, tick.frame.inTime);
    while (ASDWindow_.size() > most)
        ASDWindow_.pop_front();
}

bool StabilityWatch::Agree(const StabilitySettings& settings) const {
    const auto wanted = static_cast<std::size_t>(std::clamp<int>(settings.ASDavg, 1, LongestWindow));
    if (ASDWindow_.size() < wanted) return false;
    const auto [least, largest] =
        std::minmax_element(ASDWindow_.end() - static_cast<std::ptrdiff_t>(wanted), ASDWindow_.end());
    // In the width of the threshold: 0.03 less 0.01 must be within a threshold of 0.02.
    return static_cast<float>(*largest - *least) <= settings.Threshold;
}

StabilityWatch::Verdict StabilityWatch::Tick(const StabilitySettings& settings, const StabilityTick& tick) {
    if (!waiting_) return Verdict::NotWaiting;
    elapsed_ = static_cast<int>(tick.seconds - ASDStart_);
    Collect(tick);
    const bool stable =
        settings.ASD == 2 ? elapsed_ >= settings.Preset && tick.live : elapsed_ >= settings.Waittime && Agree(settings);
    return stable ? Verdict::Stable : Verdict::Waiting;
}

std::string StabilityWatch::CountDown(const StabilitySettings& settings) const {
    if (!waiting_ || settings.ASD != 2) return {};
    return "Pre-set time countdown: " + std::to_string(std::max(0, settings.Preset - elapsed_));
}

}  // namespace kelvo
