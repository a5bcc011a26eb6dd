#pragma once

#include <optional>
#include <span>
#include <vector>

#include "statistics/FittedCurve.h"
#include "statistics/StraightLine.h"
#include "statistics/ThreeColumns.h"

namespace kelvo {

/// Least squares y = intercept + slope·log10(10^x + c), c of 0 or above: a straight line that levels off below
/// x = log10(c). c of 0 is the straight line itself, of two parameters. For a given c it is a straight line, so the
/// squares are searched over c alone. Every field is finite. Source of the linearised variances: Bates and Watts,
/// Nonlinear Regression Analysis and Its Applications, chapter 2; of the interval by the growth of the squares,
/// chapter 6.
class OffsetLine : public FittedCurve {
 public:
    /// @return none below four different x, or when the best c lies at or above the highest 10^x: such points do not
    /// follow the formula
    static std::optional<OffsetLine> Of(std::span<const double> x, std::span<const double> y);

    double c = 0;  ///< 0: the straight line fits as well
    double slope = 0, intercept = 0;
    double straightSquares = 0;  ///< sum of squares of the straight line

    double At(double x) const override;
    double SlopeAt(double x) const override;
    double Spread(double x) const override;
    /// How c differs from 0: the squares that c saves over s², to be compared with Fisher's F of 1 and n − 3; s² of n −
    /// 3 degrees.
    double F() const { return (straightSquares - residualSquares) / Variance(); }
    double FLimit() const;
    bool Significant() const { return c > 0 && F() > FLimit(); }
    /// Standard deviations of slope and intercept, c found with them.
    double SlopeDeviation() const;
    double InterceptDeviation() const;
    /// The 95 % interval of c: those whose squares are above the least by no more than t²·s². Its low end is 0 exactly
    /// when c is not significant.
    struct Interval {
        double low = 0, high = 0;
    };
    /// @return none when it has no end below the highest 10^x
    std::optional<Interval> CInterval() const;

 private:
    OffsetLine(std::vector<double> concentrations, std::vector<double> y)
        : concentrations_(std::move(concentrations)), y_(std::move(y)) {}
    std::optional<StraightLine> LineAt(double c, std::vector<double>& logs) const;
    double SquaresAt(double logC, std::vector<double>& logs) const;
    double Variance() const { return residualSquares / (n - 3); }
    Three Derivatives(double concentration) const;

    std::vector<double> concentrations_, y_;
    double lowestLog_ = 0, highestLog_ = 0;
    StraightLine line_;                    ///< over log10(10^x + c)
    std::optional<ThreeColumns> columns_;  ///< none when c is 0
};

}  // namespace kelvo
