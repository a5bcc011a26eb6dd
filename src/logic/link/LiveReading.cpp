#include "link/LiveReading.h"

#include "text/Number.h"

namespace kelvo {

void LiveReading::Open() {
    if (state_.ReadAvg < 1) state_.ReadAvg = 1;
    average_ = ReadingAverage();
    average_.Resize(state_.ReadAvg);
    watch_.Clear();
}

bool LiveReading::Take(ReadingAverage::FirstTick firstTick) {
    if (link_ != nullptr && !link_->HasData()) return false;
    return average_.ReadChannels(state_.Reading, 0, 3, firstTick);
}

std::string LiveReading::MvText() const {
    return Format(Average(0), "#0.00");
}

StabilitySettings LiveReading::Settings() const {
    return {state_.ASD, state_.ASDavg, state_.Threshold, state_.Waittime, state_.Preset};
}

LiveReading::Verdict LiveReading::Judge(const std::string& displayed) {
    const LinkStatus::Kind kind = link_ == nullptr ? LinkStatus::Kind::Live : link_->Status().kind;
    const bool live = kind == LinkStatus::Kind::Live || kind == LinkStatus::Kind::Late;
    return watch_.Tick(Settings(), Val(displayed), live, SecondsNow());
}

}  // namespace kelvo
