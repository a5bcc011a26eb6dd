#pragma once

#include <array>
#include <optional>
#include <span>

namespace kelvo {

using Three = std::array<double, 3>;

/// What the points of a least-squares fit of three parameters tell on each of them: the triangle R of the columns
/// J = Q·R, from which the variance of g·θ is s²·|R⁻ᵀg|² for any g. Worked out by turning the columns square to one
/// another, which loses fewer digits than the sums of their products.
/// Source: Björck, Numerical Methods for Least Squares Problems, chapters 1.1 and 2.4.
class ThreeColumns {
 public:
    /// @param rows  ∂f/∂θ at each point
    /// @return none when the points do not determine all three
    static std::optional<ThreeColumns> Of(std::span<const Three> rows);

    /// The θ of the least squares. @param rows  those that this was made of
    Three Solve(std::span<const Three> rows, std::span<const double> y) const;
    /// Variance of g·θ in units of s².
    double Spread(const Three& g) const;

 private:
    Three Forward(const Three& g) const;

    std::array<Three, 3> r_{};
};

}  // namespace kelvo
