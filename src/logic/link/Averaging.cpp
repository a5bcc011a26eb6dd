#include "link/Averaging.h"

#include <algorithm>

namespace kelvo {

void ReadingAverage::Resize(int readings) {
    readings_ = std::max(1, readings);
    filled_ = 0;
    const auto places = static_cast<std::size_t>(readings_) + 1;
    AvgWork_.assign(places, 0.0f);
    for (auto& history : AvgHistory_)
        history.assign(places, 0.0f);
}

float ReadingAverage::RollingMean(int tick, float value) {
    const auto last = static_cast<std::size_t>(readings_);
    if (tick != 0) {
        for (std::size_t place = 1; place < last; ++place)
            AvgWork_[place] = AvgWork_[place + 1];
        AvgWork_[last] = value;
    }
    float sum = 0;
    for (std::size_t place = 1; place <= last; ++place)
        sum += AvgWork_[place];
    return sum / static_cast<float>(readings_);
}

bool ReadingAverage::ReadChannels(const std::array<float, 5>& reading, int firstChannel, int lastChannel,
                                  FirstTick firstTick, bool fresh) {
    zeroChannel_ = -1;
    for (int channel = firstChannel; channel <= lastChannel; ++channel) {
        const auto k = static_cast<std::size_t>(channel);
        const bool averaged = channel == 0 || channel == 2;
        const float value = reading[k];
        if (ReadTick == 0 && firstTick == FirstTick::WaitsForData && value == 0) {
            zeroChannel_ = channel;
            return false;
        }
        if (ReadTick == 0) std::fill(AvgHistory_[k].begin() + 1, AvgHistory_[k].end(), value);
        AvgWork_ = AvgHistory_[k];
        AvgReading[k] = averaged ? RollingMean(ReadTick, value) : value;
        AvgHistory_[k] = AvgWork_;
    }
    filled_ = !fresh ? 0 : ReadTick == 0 ? readings_ : std::min(filled_ + 1, readings_);
    return true;
}

}  // namespace kelvo
