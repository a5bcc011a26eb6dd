#include "statistics/InversePrediction.h"

#include <algorithm>
#include <cmath>

#include "statistics/Replicates.h"
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
    return {.x = line_.meanX + fromMiddle, .deviation = deviation, .halfWidth = t_ * deviation, .readings = readings};
}

InverseEstimate InversePrediction::Of(std::span<const double> readings) const {
    const auto own = Summarise(readings);
    if (!own) return At(readings.front());
    InverseEstimate estimate = At(own->mean, own->n);
    const double ratio = own->deviation / line_.residualDeviation;
    constexpr double Sure = 0.98;
    if (!(ratio * ratio > FisherF(own->n - 1, line_.Freedom(), Sure))) return estimate;
    estimate.scattersMore = true;
    const double slope = std::abs(line_.slope);
    const double readingsPart = own->deviation / slope / std::sqrt(own->n);
    const double fromMiddle = estimate.x - line_.meanX;
    const double linePart =
        line_.residualDeviation / slope * std::sqrt(1.0 / line_.n + fromMiddle * fromMiddle / line_.sxx);
    estimate.deviation = std::max(estimate.deviation, std::hypot(readingsPart, linePart));
    estimate.halfWidth = std::max(estimate.halfWidth, std::hypot(StudentT(own->n - 1) * readingsPart, t_ * linePart));
    return estimate;
}

}  // namespace kelvo
