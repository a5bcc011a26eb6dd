#pragma once

#include <optional>

#include "statistics/StraightLine.h"

namespace kelvo {

/// x of a reading y off a calibration line, with the interval that holds the true x in 95 of 100 cases.
struct InverseEstimate {
    double x = 0;
    double deviation = 0;  ///< standard deviation of x
    double halfWidth = 0;  ///< t·deviation: the interval is x ± this
};

/// Inverse prediction: s_x = s/|b|·√(1/m + 1/n + (y − ȳ)²/(b²·Sxx)) with m readings of the sample, times t of n − 2
/// degrees of freedom. The last term grows with the distance from the middle of the calibration.
/// Source: Miller and Miller, Statistics and Chemometrics for Analytical Chemistry, chapter on calibration; their
/// fluorescein line gives 0.716 ± 0.680 pg/mL for a reading of 2.9.
class InversePrediction {
 public:
    /// @return none when no uncertainty follows from the line: no degree of freedom, or a slope that cannot be told
    /// from 0 (t·its deviation reaches it; the interval would have no end).
    static std::optional<InversePrediction> Of(const StraightLine& line);

    InverseEstimate At(double y, int readings = 1) const;
    const StraightLine& Line() const { return line_; }

 private:
    InversePrediction(const StraightLine& line, double t) : line_(line), t_(t) {}

    StraightLine line_;
    double t_;
};

}  // namespace kelvo
