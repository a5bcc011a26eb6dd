#pragma once

#include <optional>
#include <span>
#include <string>

#include "statistics/StraightLine.h"

namespace kelvo {

/// Limits of detection and of quantification from repeated potentials of a blank.
///
/// In E = Eo + S·log10(x + b) the blank has the potential of the concentration b on the line. A sample is told from the
/// blank by three standard deviations s of the blank's potential, and is worth a figure by ten:
/// x = b·(10^(k·s/|S|) − 1) with k of 3 and 10. Where b is the ion itself, x is what a sample has beyond the blank.
/// The interval joins that of b (inverse prediction with all blanks) and that of s (chi-squared) in the logarithm as
/// distances whose squares add; that of S is in b alone.
/// Sources: 3s and 10s of blanks: ACS Committee on Environmental Improvement, Anal. Chem. 52 (1980) 2242–2249; joining
/// of intervals: Zou and Donner, Statistics in Medicine 27 (2008) 1693–1702.
/// b of 1E-6, s of 0.5 mV and S of −58 mV give 6.14E-8 and 2.20E-7.
struct BlankLimits {
    struct Limit {
        double molar = 0;
        double low = 0, high = 0;  ///< 95 %
    };
    static constexpr int Fewest = 3;

    int n = 0;
    double mean = 0, deviation = 0;  ///< mV
    std::optional<Limit> detection, quantification;
    std::string why;  ///< why there are no limits

    /// @param line  of LogC and mV where the electrode follows it
    static BlankLimits Of(std::span<const double> blanks, const StraightLine& line);
};

}  // namespace kelvo
