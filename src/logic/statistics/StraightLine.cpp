#include "statistics/StraightLine.h"

#include <algorithm>
#include <cmath>

namespace kelvo {
namespace {

bool AllEqual(std::span<const double> values) {
    return std::all_of(values.begin(), values.end(), [&](double value) { return value == values[0]; });
}

/// Equal values have exactly themselves as mean, so that rounding invents no spread.
double Mean(std::span<const double> values) {
    if (AllEqual(values)) return values[0];
    double sum = 0;
    for (const double value : values)
        sum += value;
    return sum / static_cast<double>(values.size());
}

}  // namespace

double StraightLine::Leverage(double x) const {
    return 1.0 / n + (x - meanX) * (x - meanX) / sxx;
}

std::optional<StraightLine> FitStraightLine(std::span<const double> x, std::span<const double> y) {
    if (x.size() != y.size() || x.size() < 2) return std::nullopt;
    if (AllEqual(x)) return std::nullopt;
    StraightLine line;
    line.n = static_cast<int>(x.size());
    line.meanX = Mean(x);
    line.meanY = Mean(y);
    // Sums of differences from the mean: sums of squares of the values themselves lose digits to cancellation.
    double sxy = 0, syy = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double dx = x[i] - line.meanX, dy = y[i] - line.meanY;
        line.sxx += dx * dx;
        sxy += dx * dy;
        syy += dy * dy;
    }
    if (!(line.sxx > 0)) return std::nullopt;  // so near to one another that the squares are 0
    line.slope = sxy / line.sxx;
    line.intercept = line.meanY - line.slope * line.meanX;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double residual = line.Residual(x[i], y[i]);
        line.residualSquares += residual * residual;
    }
    if (line.Freedom() > 0) {
        line.residualDeviation = std::sqrt(line.residualSquares / line.Freedom());
        line.slopeDeviation = line.residualDeviation / std::sqrt(line.sxx);
        line.interceptDeviation = line.residualDeviation * std::sqrt(1.0 / line.n + line.meanX * line.meanX / line.sxx);
    }
    line.r2 = syy > 0 ? std::clamp(1 - line.residualSquares / syy, 0.0, 1.0) : 0;
    line.r = std::copysign(std::sqrt(line.r2), line.slope);
    const double checks[] = {line.slope, line.intercept, line.sxx, line.residualSquares, line.interceptDeviation};
    if (!std::all_of(std::begin(checks), std::end(checks), [](double value) { return std::isfinite(value); }))
        return std::nullopt;
    return line;
}

}  // namespace kelvo
