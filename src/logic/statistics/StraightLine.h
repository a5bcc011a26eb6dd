#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace kelvo {

/// Least squares y = intercept + slope·x with what the scatter of the points says about it. Every field is finite.
///
/// With e the residuals, Sxx = Σ(x − x̄)² and s² = Σe²/(n − 2): the deviation of the slope is s/√Sxx and that of the
/// intercept s·√(1/n + x̄²/Sxx). Source: Draper and Smith, Applied Regression Analysis, chapter 1.
/// (0, 1), (1, 2), (2, 5) give slope 2, intercept 2/3, s = √(2/3).
struct StraightLine {
    int n = 0;
    double slope = 0, intercept = 0;
    double residualDeviation = 0;  ///< s, in the unit of y; 0 without a degree of freedom
    double slopeDeviation = 0, interceptDeviation = 0;
    double r2 = 0;  ///< share of the spread of y that the line explains; 0 when y has no spread
    double r = 0;   ///< with the sign of the slope
    double meanX = 0, meanY = 0, sxx = 0;
    double residualSquares = 0;

    int Freedom() const { return n - 2; }
    double At(double x) const { return meanY + slope * (x - meanX); }
    double Residual(double x, double y) const { return y - At(x); }
    /// Share of its own fitted value that a point at x decides, 1/n + (x − x̄)²/Sxx; the leverages of all points sum
    /// up to 2. A point with 1 carries the line alone.
    double Leverage(double x) const;
};

/// @return none below two different x, or when a sum leaves the range of a double.
std::optional<StraightLine> FitStraightLine(std::span<const double> x, std::span<const double> y);

}  // namespace kelvo
