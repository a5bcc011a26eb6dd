#pragma once

#include <array>
#include <cstdint>

#include "core/DisplayList.h"

namespace kelvo {

/// What the calibration graph shows.
struct GraphState {
    DisplayList Graph;                 ///< what the calibration graph shows now
    float YRange = 500, YSpan = 6000;  ///< scale constants, filled by SetScaleConstants
    float XDecades = 4, XOrigin = 6450;
    std::int16_t SampleCount = 0;  ///< samples plotted, at most 101
    std::array<float, 101> SampleE{}, SampleLogC{};
};

}  // namespace kelvo
