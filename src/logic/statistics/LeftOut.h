#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "statistics/StraightLine.h"

namespace kelvo {

/// One point beside the line of all the others: what a wrong one hides when it draws the line to itself.
struct LeftOut {
    StraightLine others;
    double distance = 0;  ///< y − the others' line at x, which is e/(1 − h)
    /// Externally studentised residual: the distance in deviations that a new point at x has about the others' line,
    /// t = distance/(s₍ᵢ₎·√(1 + h₍ᵢ₎)) = e/(s₍ᵢ₎·√(1 − h)). Without a wrong point it follows Student's t of n − 3
    /// degrees of freedom. None below four points, and where the others lie exactly on their line. Source: Cook and
    /// Weisberg, Residuals and Influence in Regression, chapter 2. Of (0, 0), (1, 1), (2, 3), (3, 2) the third lies
    /// 11/7 above the others' 1/7 + 9/14·x, t = √24.2.
    std::optional<double> studentised;
};

/// @return none when the others have no line
std::optional<LeftOut> LeaveOut(std::span<const double> x, std::span<const double> y, std::size_t left);

}  // namespace kelvo
