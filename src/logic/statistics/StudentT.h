#pragma once

namespace kelvo {

/// Share of cases that every interval of Kelvo is meant to hold.
constexpr double Confidence = 0.95;

/// Two-sided quantile of Student's t: a t-distributed value of `freedom` degrees lies within ± the result with the
/// probability `confidence`. Five degrees and 0.95 give 2.5706.
/// @param freedom     at least 1
/// @param confidence  between 0 and 1, both excluded
double StudentT(int freedom, double confidence = Confidence);

/// Quantile of Fisher's F, the quotient of two variances: a quotient of `upper` over `lower` degrees of freedom stays
/// below the result with the probability `probability`. (4, 6, 0.975) gives 6.2272.
/// @param upper, lower  at least 1
double FisherF(int upper, int lower, double probability);

/// Quantile of chi-squared, the sum of `freedom` squares of normal deviates: it stays below the result with the
/// probability `probability`. (4, 0.975) gives 11.1433. @param freedom  at least 1
double ChiSquared(int freedom, double probability);

}  // namespace kelvo
