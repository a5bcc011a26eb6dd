#include "link/LiveReading.h"

#include "core/Clock.h"
#include "core/ReadingSettings.h"
#include "text/Number.h"

namespace kelvo {

void LiveReading::Open() {
    if (reading_.ReadAvg < 1) reading_.ReadAvg = 1;
    average_ = ReadingAverage();
    average_.Resize(reading_.ReadAvg);
    watch_.Clear();
    ClearSteady();
}

void LiveReading::Restart() {
    average_.Restart();
    ClearSteady();
}

void LiveReading::ResizeAverage() {
    average_.Resize(reading_.ReadAvg);
    ClearSteady();
}

void LiveReading::ClearSteady() {
    for (SteadyWatch& steady : steady_)
        steady.Clear();
}

FrameMark LiveReading::Frame() const {
    if (link_ != nullptr) return link_->LatestFrame();
    // Each tick brings a new reading then.
    const auto ticks = static_cast<std::uint64_t>(average_.ReadTick) + 1;
    return {ticks, ticks, 0};
}

bool LiveReading::Take(ReadingAverage::FirstTick firstTick, int firstChannel, int lastChannel) {
    const FrameMark frame = Frame();
    if (frame.number == 0) return false;
    takenFrom_ = clock_.SteadySeconds() - frame.age;
    const bool fresh = frame.age <= ReadingState::StaleSeconds;
    if (!average_.ReadChannels(reading_.Reading, firstChannel, lastChannel, firstTick, fresh)) return false;
    Watch(frame);
    return true;
}

void LiveReading::Watch(const FrameMark& frame) {
    const bool measured = average_.Filled() == average_.Readings();
    // Two ticks may show one frame.
    if (measured && frame.number != watchedFrame_)
        for (std::size_t e = 0; e < steady_.size(); ++e)
            steady_[e].Take(takenFrom_, double{average_.AvgReading[2 * e]});
    if (!measured) ClearSteady();
    watchedFrame_ = frame.number;
}

ReadingState LiveReading::State(int electrode) const {
    using Kind = ReadingState::Kind;
    if (Frame().number == 0) return {};
    if (average_.ZeroChannel() >= 0) return {.kind = Kind::Held, .channel = average_.ZeroChannel()};
    const int filled = average_.Filled(), wanted = average_.Readings();
    if (filled == 0 && average_.ReadTick == 0) return {};
    // A screen that has stopped taking readings shows an old value too, though frames still come.
    const double age = clock_.SteadySeconds() - takenFrom_;
    if (age > ReadingState::StaleSeconds) return {.kind = Kind::Stale, .seconds = static_cast<int>(age)};
    if (filled < wanted) return {.kind = Kind::Averaging, .filled = filled, .wanted = wanted};
    return {.kind = Kind::Live, .steadiness = steady_[electrode == 0 ? 0 : 1].Judge()};
}

void LiveReading::StartWait() {
    watch_.Start(Frame(), clock_.SteadySeconds());
}

std::string LiveReading::MvText() const {
    return Format(Average(0), "#0.00");
}

StabilitySettings LiveReading::Settings() const {
    return {reading_.ASD, reading_.ASDavg, reading_.Threshold, reading_.Waittime, reading_.Preset};
}

LiveReading::Verdict LiveReading::Judge(const std::string& displayed) {
    return watch_.Tick(Settings(), {Val(displayed), Frame(), State().IsLive(), clock_.SteadySeconds()});
}

}  // namespace kelvo
