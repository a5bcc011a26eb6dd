#pragma once

#include <optional>
#include <span>

#include "statistics/FittedCurve.h"

namespace kelvo {

/// x of a reading off a curve. Beside a line that levels off an interval reaches farther down than up.
struct CurveEstimate {
    double x = 0;
    double deviation = 0;      ///< standard deviation of x, the curve taken as straight there
    double low = 0, high = 0;  ///< holds the true x in 95 of 100 cases
    int readings = 1;
    bool scattersMore = false;  ///< as of `InverseEstimate`
};

/// The readings of one sample, when points on a curve scatter by a known s.
struct MeanOfReadings {
    double mean = 0;
    double deviation = 0;  ///< of the mean
    double limit = 0;      ///< half width of its 95 % interval
    int readings = 1;
    bool scattersMore = false;
};
/// The readings are taken to scatter as the points do, s² of so many degrees of freedom; where they scatter more (F at
/// 98 %) by their own s.
MeanOfReadings MeanOf(std::span<const double> readings, double s, int freedom);

/// Where a y stands on a curve.
struct PlaceOnCurve {
    double x = 0;
    double slope = 0;   ///< dy/dx there
    double spread = 0;  ///< variance of the curve there in units of s²
};

/// Between which x a curve is known.
struct Span {
    double from = 0, to = 0;
};

/// @return none when the curve turns within, or y lies beyond it
std::optional<PlaceOnCurve> PlaceOn(const FittedCurve& curve, Span within, double y);

/// Inverse prediction off a curve: those x whose fitted value lies within t·s·√(1/m + gᵀ(JᵀJ)⁻¹g) of the mean of m
/// readings, t of n − 3 degrees of freedom. For a straight curve that is the formula of ISO 8466-2, 6, s/slope·√(…);
/// where the curve bends, the limits are looked for on the curve itself. Readings that scatter more than the points
/// count as `InversePrediction::Of` takes them.
/// @param within  the points' own x; the curve has to rise or fall all along
/// @return none when the curve turns within, the mean lies beyond it, or the interval does not end within `reach` to
/// either side before the curve turns
std::optional<CurveEstimate> PredictFromCurve(const FittedCurve& curve, Span within, std::span<const double> readings,
                                              double reach);

}  // namespace kelvo
