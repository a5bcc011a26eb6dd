#pragma once

#include <cstdint>

namespace kelvo {

/// Size of the display and what a large screen takes of it.
struct Geometry {
    std::int16_t ScreenWidth = 12000, ScreenHeight = 9000;  ///< twips of the size chosen
    float ScreenScaleX = 0.95f, ScreenScaleY = 1.2f;
    float FormScale = 0.82f;  ///< fraction of the display that a large screen fills
};

}  // namespace kelvo
