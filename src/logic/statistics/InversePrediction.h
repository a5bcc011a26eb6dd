#pragma once

#include <optional>
#include <span>

#include "statistics/StraightLine.h"

namespace kelvo {

/// x of a reading y off a calibration line, with the interval that holds the true x in 95 of 100 cases.
struct InverseEstimate {
    double x = 0;
    double deviation = 0;  ///< standard deviation of x
    double halfWidth = 0;  ///< the interval is x ± this
    int readings = 1;      ///< of the sample
    /// The readings scatter more than the standards do, so that their own scatter was taken.
    bool scattersMore = false;
};

/// Inverse prediction: s_x = s/|b|·√(1/m + 1/n + (y − ȳ)²/(b²·Sxx)) with y the mean of m readings of the sample, times
/// t of n − 2 degrees of freedom. The last terms are those of the calibration: they stay however often the sample is
/// read. Source: Miller and Miller, Statistics and Chemometrics for Analytical Chemistry, chapter on calibration; their
/// fluorescein line gives 0.716 ± 0.680 pg/mL for a reading of 2.9, and with four readings of mean 13.5 a deviation of
/// 0.141 where one has 0.240.
class InversePrediction {
 public:
    /// @return none when no uncertainty follows from the line: no degree of freedom, or a slope that cannot be told
    /// from 0 (t·its deviation reaches it; the interval would have no end).
    static std::optional<InversePrediction> Of(const StraightLine& line);

    /// @param y         one reading, or the mean of several
    /// @param readings  how many; they are taken to scatter as the standards do
    InverseEstimate At(double y, int readings = 1) const;

    /// Of readings of one sample, at least one. Where they scatter more than the standards (s_r² above F·s², F at 98 %)
    /// they count with their own scatter: h = √(t(m − 1)²·s_r²/m + t(n − 2)²·s²·(1/n + …))/|b|, the limits
    /// of two independent parts added as squares, and never less than `At` gives.
    InverseEstimate Of(std::span<const double> readings) const;

    const StraightLine& Line() const { return line_; }

 private:
    InversePrediction(const StraightLine& line, double t) : line_(line), t_(t) {}

    StraightLine line_;
    double t_;
};

}  // namespace kelvo
