#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace kelvo {

/// What repeated values of one thing say together. Every field is finite.
struct Replicates {
    int n = 0;
    double mean = 0;
    double deviation = 0;            ///< standard deviation of one value, n − 1 degrees of freedom
    std::optional<double> relative;  ///< deviation in % of the mean; none for a mean of 0
    double low = 0, high = 0;        ///< 95 % interval of the mean: mean ± t·deviation/√n
};

/// 10, 12 and 14 have mean 12, deviation 2 and interval 12 ± 4.97 (t 4.3027).
/// @return none below two values, or when a sum leaves the range of a double.
std::optional<Replicates> Summarise(std::span<const double> values);

/// Grubbs' test for one outlier among values that are otherwise normally distributed, two-sided at 95 %.
///
/// G is the largest distance from the mean in standard deviations. Its limit is (n − 1)/√n·√(t²/(n − 2 + t²)) with
/// t the upper 0.05/(2n) point of Student's t with n − 2 degrees of freedom.
/// Source: F. E. Grubbs, Technometrics 11 (1969) 1–21; NIST/SEMATECH e-Handbook of Statistical Methods, 1.3.5.17.1.
/// Five values have the limit 1.715.
struct Grubbs {
    std::size_t suspect = 0;  ///< index of the value farthest from the mean
    double g = 0, limit = 0;
    bool Outlier() const { return g > limit; }
};

/// @return none below three values or when all are equal.
std::optional<Grubbs> GrubbsTest(std::span<const double> values);

}  // namespace kelvo
