#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Messages.h"
#include "core/StateOf.h"

namespace kelvo {

class Prompts;

// Numerics of the ISE calibration; nothing here draws. An electrode gives E = Eo + S·LogC with E in mV and LogC
// the base-10 logarithm of mol/L. The points are `CaliE`/`CaliLogC`[1..`CaliPoints`], in the order of the arrays.

/// Fills `FitSums` from scratch over the points 1..n. `SumL3` and `Sxz` are 32-bit floats, all else is double.
/// Points that share one LogC have `Sxx`, `Sxy`, `Szz`, `Szy` and `Sxz` of exactly 0, and points that share one
/// potential have `Syy` and the mixed sums of exactly 0: rounding invents no spread.
/// @throws RuntimeError 9 when there are not n points, 6 when a sum overflows its width.
void CollectSums(IseCalibration& calibration, int n);

/// Least squares over all points: `CaliSlope` = Sxy/Sxx as a 32-bit float, then `CaliEo` = (ΣE − ΣL·slope)/N.
/// The points (−1, −54), (−2, 4), (−3, 62), (−4, 120) give −58 and −112.
/// @return false after one message when the points have no line; slope and intercept are then as before, and
/// `LineRefused` says so.
bool FitLinear(IseCalibration& calibration, Prompts& prompts);

/// One point: when `CaliSlope` is 0 it becomes the slope of `KnownSlope` carried from `KnownSlopeTemp` to
/// `temperature` (°C) by the ratio of absolute temperatures; an existing slope is kept. Then
/// `CaliEo` = `CaliE`[1] − `CaliSlope`·`CaliLogC`[1]. 58 at 25 °C is 58.9727 at 30 °C.
/// @throws RuntimeError 11 for a known temperature of −273.15 °C, 6 on overflow, 9 without a point; nothing is
/// changed then but `LineRefused`.
void FitKnownSlope(CalibrationState& state, double temperature);

/// Least squares of E = FitA·LogC² + FitB·LogC + FitC over all points, FitA a 32-bit float.
/// @return false after one message when fewer than three different LogC leave the curve undetermined; the
/// coefficients are then as before, and `CurveRefused` says so.
bool FitBestCurve(IseCalibration& calibration, Prompts& prompts);

/// Correlation r of the linear fit by mask "#0.000", from the sums of the latest `CollectSums`; none after a
/// message. Offered as an operation; no screen calls it.
std::optional<std::string> ShowCorrelation(const IseCalibration& calibration, Prompts& prompts, int n);

/// Spread of slope and intercept of the linear fit by mask "#0.000".
struct SigmaTexts {
    std::string slope, intercept;
};
/// From the sums of the latest `CollectSums`; none after a message. Offered as an operation; no screen calls it.
std::optional<SigmaTexts> ShowSigmas(const IseCalibration& calibration, Prompts& prompts, int n);

/// Largest and smallest LogC of the points; 0 without points.
float MaxLogC(const IseCalibration& calibration);
float MinLogC(const IseCalibration& calibration);

/// Sorts `keys` ascending over first..last by exchanging, moving `other` with it; a handful of elements.
void SortPairs(int first, int last, std::vector<float>& keys, std::vector<float>& other);

/// ppm of a potential by interpolation between the stored points, without any fit; −1 where two neighbours
/// cannot be told apart. Logarithmic in ppm, but linear when `pHMode` is −1. With one point the result is
/// 10^((E − `CaliE`[1]) / `CaliLogC`[1]). Potentials are sorted with their ppm in a copy: the calibration in use keeps
/// its own order.
/// @throws RuntimeError 5 for a ppm not above 0, 6, 11 in the arithmetic, 9 without points.
double ConcFromPotential(StateOf<const Navigation, const IseCalibration> state, int n, float e);

/// How many of the points differ in LogC: a line needs two, a parabola three.
int DifferentLogCs(const IseCalibration& calibration);

/// `CaliSlope` as the slope box shows it, mask "##0.00".
std::string SlopeText(const IseCalibration& calibration);

/// `CaliSlope` rounded by "#0.00": what `LastSlope` takes when a calibration is saved or opened. 0, none known, when
/// the points have no line and the slope is that of an earlier calibration.
float RememberedSlope(const IseCalibration& calibration);

/// A quiet line when a fit was refused and slope or results are those of an earlier calibration, empty when not needed.
std::string RefusedFitRemark(const IseCalibration& calibration);

/// A quiet line when potentials and LogC are paired across (by the setup's sorting),
/// empty when not needed. It shows for the points just entered and for a file that holds such a pairing.
std::string PairingRemark(const IseCalibration& calibration);

}  // namespace kelvo
