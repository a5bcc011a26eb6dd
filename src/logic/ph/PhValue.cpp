#include "ph/PhValue.h"

#include <algorithm>

namespace kelvo {

std::optional<float> PhFromMv(const BufferTable& table, int rows, float millivolts) {
    const int held = std::min(rows, static_cast<int>(table.size()) - 1);
    if (held < 1) return std::nullopt;
    constexpr std::size_t Ph = 1, Mv = 2;
    const auto row = [&](int i) { return i == 0 ? std::array<float, 3>{} : table[static_cast<std::size_t>(i)]; };
    int i = 1;
    while (i <= held && millivolts < row(i)[Mv])
        ++i;
    if (i == 1) i = 2;
    if (i == held + 1) i = held;
    const auto below = row(i - 1), above = row(i);
    if (above[Ph] == below[Ph] || above[Mv] == below[Mv]) return std::nullopt;
    const float slope = (below[Mv] - above[Mv]) / (above[Ph] - below[Ph]);
    return (below[Mv] - millivolts) / slope + below[Ph];
}

float PhTempCorrect(float ph, float calTemp, float sampleTemp) {
    constexpr double Zero = 273.15;
    return static_cast<float>(7 - (7 - double{ph}) * (calTemp + Zero) / (sampleTemp + Zero));
}

}  // namespace kelvo
