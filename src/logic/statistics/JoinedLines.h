#pragma once

#include <optional>
#include <span>
#include <vector>

#include "statistics/CurvePrediction.h"

namespace kelvo {

/// How much values of one thing differ, pooled over all things that were measured more than once: the squares about
/// each thing's mean, one degree of freedom less than its values. Source: ISO 8466-1, and Draper and Smith, Applied
/// Regression Analysis, chapter 2 (pure error). Of x 1, 1, 2, 3, 3, 3 and y 4, 6, 9, 1, 2, 3 the squares are 4 with
/// 3 degrees.
struct PureError {
    double squares = 0;
    int freedom = 0;
    int different = 0;  ///< x that differ

    double Deviation() const;  ///< 0 without a degree of freedom
};
PureError PureErrorOf(std::span<const double> x, std::span<const double> y);

/// Means of points of one x, joined by straight lines in the order of x. The lines pass through the means whatever
/// these are worth, so that only points of one and the same x tell how much they scatter. What the truth bends between
/// two of them is not seen.
class JoinedLines {
 public:
    /// @return none when fewer than two x differ, or the means do not rise or fall all along
    static std::optional<JoinedLines> Of(std::span<const double> x, std::span<const double> y);

    const PureError& Error() const { return error_; }
    /// @return none when y lies beyond the points
    std::optional<PlaceOnCurve> PlaceOf(double y) const;
    /// The mean of m readings scatters by s²/m, and at the share λ between means of k₁ and k₂ points the line by
    /// s²·((1 − λ)²/k₁ + λ²/k₂). Both limits are read off the joined lines, t of the pooled degrees of freedom.
    /// @return none without a degree of freedom, or when the mean lies beyond the points
    std::optional<CurveEstimate> Predict(std::span<const double> readings) const;

 private:
    struct Joint {
        double x = 0, y = 0;
        int count = 0;
    };
    /// Index of the line's end with the larger y; the outermost lines are extended.
    std::size_t LineAt(double y) const;
    double XAt(double y) const;

    std::vector<Joint> joints_;        ///< y rises
    double lowest_ = 0, highest_ = 0;  ///< y of the points
    PureError error_;
};

}  // namespace kelvo
