#pragma once

namespace kelvo {

/// A curve through points by least squares, with what their scatter says about it.
class FittedCurve {
 public:
    virtual ~FittedCurve() = default;

    int n = 0;
    double residualSquares = 0;
    double residualDeviation = 0;  ///< s, in the unit of y; 0 without a degree of freedom
    int parameters = 3;            ///< that the points decide

    int Freedom() const { return n - parameters; }
    virtual double At(double x) const = 0;
    virtual double SlopeAt(double x) const = 0;
    /// Variance of At(x) in units of s²: gᵀ(JᵀJ)⁻¹g with g the derivatives by the parameters.
    virtual double Spread(double x) const = 0;

 protected:
    FittedCurve() = default;
    FittedCurve(const FittedCurve&) = default;
    FittedCurve& operator=(const FittedCurve&) = default;
};

}  // namespace kelvo
