#include "statistics/LeftOut.h"

#include <cmath>
#include <vector>

namespace kelvo {

std::optional<LeftOut> LeaveOut(std::span<const double> x, std::span<const double> y, std::size_t left) {
    std::vector<double> otherX, otherY;
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (i == left) continue;
        otherX.push_back(x[i]);
        otherY.push_back(y[i]);
    }
    const auto others = FitStraightLine(otherX, otherY);
    if (!others) return std::nullopt;
    LeftOut out{.others = *others, .distance = others->Residual(x[left], y[left]), .studentised = std::nullopt};
    const double deviation = others->residualDeviation * std::sqrt(1 + others->Leverage(x[left]));
    const double studentised = out.distance / deviation;
    if (others->Freedom() > 0 && std::isfinite(studentised)) out.studentised = studentised;
    return out;
}

}  // namespace kelvo
