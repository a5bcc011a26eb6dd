#pragma once

#include <array>

namespace kelvo {

/// What the setup of a continuous recording was left with, as rows of its lists, -1 none. On the ISE path the ticks
/// say nothing: the ISE is recorded.
struct RecordingChoices {
    int CmbTime = -1;            ///< interval: 0 to 8 for 2, 5, 10, 30 s, 1, 2, 5, 10, 30 min
    int cmbX = -1;               ///< period: 0 to 3 for 20, 50, 100, 200 points
    int cmbY = -1;               ///< range of the vertical axis
    std::array<bool, 2> chk1{};  ///< electrode 1 is recorded; with temperature compensation
    std::array<bool, 2> chk2{};  ///< the same of electrode 2
};

}  // namespace kelvo
