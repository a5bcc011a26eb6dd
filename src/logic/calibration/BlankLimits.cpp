#include "calibration/BlankLimits.h"

#include <cmath>

#include "calibration/Quality.h"
#include "statistics/InversePrediction.h"
#include "statistics/Replicates.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

/// log10(10^(k·s/S) − 1): how far above the level of the blank the limit lies, in decades.
double Above(double k, double s, double slope) {
    return std::log10(std::expm1(std::log(10.0) * k * s / std::abs(slope)));
}

BlankLimits::Limit LimitOf(double k, const Replicates& blanks, double slope, const InverseEstimate& level) {
    constexpr double Tail = (1 - Confidence) / 2;
    const int freedom = blanks.n - 1;
    const double least = blanks.deviation * std::sqrt(freedom / ChiSquared(freedom, 1 - Tail));
    const double most = blanks.deviation * std::sqrt(freedom / ChiSquared(freedom, Tail));
    const double above = Above(k, blanks.deviation, slope), logC = level.x + above;
    return {std::pow(10.0, logC), std::pow(10.0, logC - std::hypot(level.halfWidth, above - Above(k, least, slope))),
            std::pow(10.0, logC + std::hypot(level.halfWidth, Above(k, most, slope) - above))};
}

}  // namespace

BlankLimits BlankLimits::Of(std::span<const double> blanks, const StraightLine& line) {
    constexpr double MostDecades = 2, FarthestLogC = 20;
    BlankLimits limits;
    limits.n = static_cast<int>(blanks.size());
    const auto own = Summarise(blanks);
    if (!own || own->n < Fewest) {
        limits.why = "needs three blanks";
        return limits;
    }
    limits.mean = own->mean;
    limits.deviation = own->deviation;
    const auto prediction = InversePrediction::Of(line);
    if (!prediction || ScatterVanishes(line)) {
        limits.why = "the line tells no interval";
        return limits;
    }
    const InverseEstimate level = prediction->Of(blanks);
    if (!(own->deviation > 0))
        limits.why = "all blanks are alike";
    else if (!(std::abs(level.x) <= FarthestLogC))
        limits.why = "the blanks lie far off the standards";
    else if (!(level.halfWidth <= MostDecades))
        limits.why = "the blank is uncertain by more than a factor of 100 (95 %)";
    if (!limits.why.empty()) return limits;
    constexpr double Detected = 3, Quantified = 10;
    limits.detection = LimitOf(Detected, *own, line.slope, level);
    limits.quantification = LimitOf(Quantified, *own, line.slope, level);
    return limits;
}

}  // namespace kelvo
