#include "statistics/InversePrediction.h"

#include <cmath>

#include "statistics/StudentT.h"

namespace kelvo {

std::optional<InversePrediction> InversePrediction::Of(const StraightLine& line) {
    if (line.Freedom() < 1 || line.slope == 0) return std::nullopt;
    const double t = StudentT(line.Freedom());
    if (t * line.slopeDeviation >= std::abs(line.slope)) return std::nullopt;
    return InversePrediction(line, t);
}

InverseEstimate InversePrediction::At(double y, int readings) const {
    const double fromMiddle = (y - line_.meanY) / line_.slope;
    const double spread = 1.0 / readings + 1.0 / line_.n + fromMiddle * fromMiddle / line_.sxx;
    const double deviation = line_.residualDeviation / std::abs(line_.slope) * std::sqrt(spread);
    return {line_.meanX + fromMiddle, deviation, t_ * deviation};
}

}  // namespace kelvo
