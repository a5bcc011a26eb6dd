#pragma once

#include <optional>
#include <span>

namespace kelvo {

/// A quotient of two variances with what it has to exceed to be no chance.
struct FTest {
    double f = 0, limit = 0;
    int upper = 0, lower = 0;  ///< degrees of freedom
    bool Significant() const { return f > limit; }
};

/// Probability that a straight line passes each of the tests.
constexpr double LinearityConfidence = 0.99;

/// Mandel's test of a straight line against a parabola: F = (Σe²_line − Σe²_parabola)/s²_parabola with 1 and n − 3
/// degrees of freedom, at 99 %. Source: ISO 8466-1, 5.1.3; J. Mandel, The Statistical Analysis of Experimental Data
/// (Wiley, 1964), chapter 7. (0, 1), (1, 2), (2, 5), (3, 4) give (4.2 − 3.2)/3.2.
/// @return none below four points or three different x, and when the parabola passes through all points
std::optional<FTest> MandelTest(std::span<const double> x, std::span<const double> y);

/// Whether the means of points of one x lie farther off the straight line than the points among themselves:
/// F = ((Σe² − pure error)/(k − 2))/(pure error/(n − k)) for k different x, at 99 %. Source: Draper and Smith, Applied
/// Regression Analysis, chapter 2.
/// @return none when nothing is repeated or fewer than three x differ, and when repeated points are all alike
std::optional<FTest> LackOfFitTest(std::span<const double> x, std::span<const double> y);

}  // namespace kelvo
