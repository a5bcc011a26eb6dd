#include "ph/SteadyWatch.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {

void SteadyWatch::Take(const std::string& shown) {
    window_.push_back(static_cast<int>(std::lround(Val(shown) * 100)));
    if (window_.size() > Readings) window_.pop_front();
}

bool SteadyWatch::Steady() const {
    if (window_.size() < Readings) return false;
    const auto [least, most] = std::minmax_element(window_.begin(), window_.end());
    return *most - *least <= 2 * Hundredths;
}

}  // namespace kelvo
