#include "statistics/CurvePrediction.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "statistics/Replicates.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

constexpr int Halvings = 50;

/// Whether the fitted value at x lies as near to the mean as both are known.
struct Nearness {
    const FittedCurve& curve;
    const MeanOfReadings& own;
    double limit = 0;  ///< half width by the curve where its spread is 1

    bool At(double x) const {
        return std::abs(own.mean - curve.At(x)) <= std::hypot(own.limit, limit * std::sqrt(curve.Spread(x)));
    }
};

/// The x between where the curve has the value; the curve passes it exactly once there.
double RootOf(const FittedCurve& curve, Span within, double value) {
    const bool rises = curve.At(within.to) > curve.At(within.from);
    for (int i = 0; i < 2 * Halvings; ++i) {
        const double middle = (within.from + within.to) / 2;
        ((curve.At(middle) < value) == rises ? within.from : within.to) = middle;
    }
    return (within.from + within.to) / 2;
}

/// The farthest x from `x` that still holds, stepping outwards; none when it does not end.
std::optional<double> EndOf(const Nearness& near, double x, double reach) {
    constexpr int Steps = 200;
    const double slope = near.curve.SlopeAt(x);
    double inside = x;
    for (int i = 1; i <= Steps; ++i) {
        double outside = x + reach * i / Steps;
        if (near.curve.SlopeAt(outside) * slope <= 0) return std::nullopt;
        if (near.At(outside)) {
            inside = outside;
            continue;
        }
        for (int half = 0; half < Halvings; ++half) {
            const double middle = (inside + outside) / 2;
            (near.At(middle) ? inside : outside) = middle;
        }
        return inside;
    }
    return std::nullopt;
}

}  // namespace

MeanOfReadings MeanOf(std::span<const double> readings, double s, int freedom) {
    const auto count = static_cast<double>(readings.size());
    MeanOfReadings out{.mean = std::accumulate(readings.begin(), readings.end(), 0.0) / count,
                       .deviation = s / std::sqrt(count),
                       .readings = static_cast<int>(readings.size())};
    out.limit = StudentT(freedom) * out.deviation;
    constexpr double Sure = 0.98;
    const auto own = Summarise(readings);
    if (!own || !(own->deviation * own->deviation > s * s * FisherF(own->n - 1, freedom, Sure))) return out;
    out.scattersMore = true;
    out.deviation = own->deviation / std::sqrt(count);
    out.limit = std::max(out.limit, StudentT(own->n - 1) * out.deviation);
    return out;
}

std::optional<PlaceOnCurve> PlaceOn(const FittedCurve& curve, Span within, double y) {
    if (!(curve.SlopeAt(within.from) * curve.SlopeAt(within.to) > 0)) return std::nullopt;
    const auto [low, high] = std::minmax({curve.At(within.from), curve.At(within.to)});
    if (y < low || y > high) return std::nullopt;
    const double x = RootOf(curve, within, y);
    return PlaceOnCurve{x, curve.SlopeAt(x), curve.Spread(x)};
}

std::optional<CurveEstimate> PredictFromCurve(const FittedCurve& curve, Span within, std::span<const double> readings,
                                              double reach) {
    if (curve.Freedom() < 1) return std::nullopt;
    const double s = curve.residualDeviation;
    const MeanOfReadings own = MeanOf(readings, s, curve.Freedom());
    const auto at = PlaceOn(curve, within, own.mean);
    if (!at) return std::nullopt;
    CurveEstimate out{.x = at->x, .readings = own.readings, .scattersMore = own.scattersMore};
    out.deviation = std::hypot(own.deviation, s * std::sqrt(at->spread)) / std::abs(at->slope);
    const Nearness near{curve, own, StudentT(curve.Freedom()) * s};
    const auto down = EndOf(near, at->x, -reach), up = EndOf(near, at->x, reach);
    if (!down || !up) return std::nullopt;
    out.low = *down;
    out.high = *up;
    return out;
}

}  // namespace kelvo
