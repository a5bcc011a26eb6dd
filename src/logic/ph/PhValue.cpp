#include "ph/PhValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelvo {

std::optional<float> PhFromMv(const BufferTable& table, int rows, float millivolts) {
    const int held = std::min(rows, static_cast<int>(table.size()) - 1);
    if (held < 1) return std::nullopt;
    constexpr std::size_t Ph = 1, Mv = 2;
    BufferTable falling(table.begin() + 1, table.begin() + 1 + held);
    std::stable_sort(falling.begin(), falling.end(), [](const auto& a, const auto& b) { return a[Mv] > b[Mv]; });
    if (held == 1) falling.insert(falling.begin(), {0, 0, 0});
    std::size_t i = 1;
    while (i + 1 < falling.size() && millivolts < falling[i][Mv])
        ++i;
    const auto &below = falling[i - 1], &above = falling[i];
    if (above[Ph] == below[Ph] || above[Mv] == below[Mv]) return std::nullopt;
    const float slope = (below[Mv] - above[Mv]) / (above[Ph] - below[Ph]);
    return (below[Mv] - millivolts) / slope + below[Ph];
}

float PhTempCorrect(float ph, float calTemp, float sampleTemp) {
    constexpr double Zero = 273.15;
    if (!(calTemp > -Zero) || !(sampleTemp > -Zero) || std::isinf(sampleTemp))
        return std::numeric_limits<float>::quiet_NaN();
    return static_cast<float>(7 - (7 - double{ph}) * (calTemp + Zero) / (sampleTemp + Zero));
}

}  // namespace kelvo
