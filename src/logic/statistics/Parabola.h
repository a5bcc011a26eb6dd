#pragma once

#include <optional>
#include <span>

#include "statistics/FittedCurve.h"
#include "statistics/ThreeColumns.h"

namespace kelvo {

/// Least squares y = a·x² + b·x + c. Every field is finite. (0, 1), (1, 2), (2, 5), (3, 4) give a −1/2, b 27/10,
/// c 4/5 and a sum of squares of 16/5.
/// Source: ISO 8466-2, Water quality, Calibration of second order, 5.
class Parabola : public FittedCurve {
 public:
    /// @return none below three different x, or when a sum leaves the range of a double
    static std::optional<Parabola> Of(std::span<const double> x, std::span<const double> y);

    double a = 0, b = 0, c = 0;

    double At(double x) const override;
    double SlopeAt(double x) const override { return first_ + 2 * a * (x - middle_); }
    double Spread(double x) const override;

 private:
    explicit Parabola(const ThreeColumns& columns) : columns_(columns) {}

    double middle_ = 0, mean_ = 0, first_ = 0;  ///< y = mean_ + first_·(x − middle_) + a·(x − middle_)²
    ThreeColumns columns_;
};

}  // namespace kelvo
