#pragma once

#include <array>
#include <cstdint>

namespace kelvo {

/// The latest frame, and how readings are averaged and judged.
struct ReadingSettings {
    std::int16_t ASD = 1, ASDavg = 10, Waittime = 5, Preset = 30;
    float Threshold = 0;
    std::int16_t ReadAvg = 1;        ///< readings averaged
    std::array<float, 5> Reading{};  ///< latest frame: electrode 1 mV, sensor 1, electrode 2 mV, sensor 2
};

}  // namespace kelvo
