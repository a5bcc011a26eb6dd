#include "calibration/CurveFit.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "calibration/CalibrationState.h"
#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const NoLine = "'E =Eo + S*LogC' function cannot be used with some of the X values";
const char* const NoCurve = "Some data divided by zero, function cannot be used";
const char* const CorrelationZero = "Correlation cannot be made with zero values";
const char* const CorrelationNegative = "Correlation cannot be made with negative values";
const char* const SigmasRefused = "Correlation cannot be made with negative or zero values";

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

void NeedPoints(const IseCalibration& calibration, int n) {
    const bool held = n >= 0 && At(n) < calibration.CaliE.size() && At(n) < calibration.CaliLogC.size() &&
                      At(n) < calibration.CaliPpm.size();
    if (!held) throw RuntimeError(ErrorNumber::Subscript);
}

bool AllEqual(const std::vector<float>& values, int n) {
    for (int i = 2; i <= n; ++i)
        if (values[At(i)] != values[1]) return false;
    return true;
}

/// Runs a fit; a failure of its arithmetic is shown once, as every failing step does.
template <typename Fit>
bool Guarded(Prompts& prompts, Fit fit) {
    try {
        return fit();
    } catch (const RuntimeError&) {
        prompts.Message(DataOutOfRange);
        return false;
    }
}

bool Refuse(Prompts& prompts, const char* text) {
    prompts.Message(text);
    return false;
}

}  // namespace

void CollectSums(IseCalibration& calibration, int n) {
    NeedPoints(calibration, n);
    kelvo::FitSums sums;
    double sumL3 = 0;
    for (int i = 1; i <= n; ++i) {
        const double x = calibration.CaliLogC[At(i)];
        const double y = calibration.CaliE[At(i)];
        const double x2 = x * x;
        sums.SumE += y;
        sums.SumE2 += y * y;
        sums.SumL += x;
        sums.SumL2 += x2;
        sums.SumL4 += x2 * x2;
        sums.SumEL += y * x;
        sums.SumEL2 += y * x2;
        sumL3 += x2 * x;
    }
    sums.SumL3 = ToSingle(sumL3);
    const bool spreadX = !AllEqual(calibration.CaliLogC, n);
    const bool spreadY = !AllEqual(calibration.CaliE, n);
    if (spreadY) sums.Syy = sums.SumE2 - sums.SumE * sums.SumE / n;
    if (spreadX) {
        sums.Sxx = sums.SumL2 - sums.SumL * sums.SumL / n;
        sums.Szz = sums.SumL4 - sums.SumL2 * sums.SumL2 / n;
        sums.Sxz = ToSingle(sums.SumL3 - sums.SumL2 * sums.SumL / n);
    }
    if (spreadX && spreadY) {
        sums.Sxy = sums.SumEL - sums.SumE * sums.SumL / n;
        sums.Szy = sums.SumEL2 - sums.SumE * sums.SumL2 / n;
    }
    calibration.FitSums = sums;
}

bool FitLinear(IseCalibration& calibration, Prompts& prompts) {
    calibration.LineRefused = true;
    return Guarded(prompts, [&] {
        const int n = calibration.CaliPoints;
        CollectSums(calibration, n);
        const kelvo::FitSums& sums = calibration.FitSums;
        if (sums.Sxx == 0) return Refuse(prompts, NoLine);
        const float slope = ToSingle(Divide(sums.Sxy, sums.Sxx));
        calibration.CaliEo = Finite((sums.SumE - sums.SumL * slope) / n);
        calibration.CaliSlope = slope;
        calibration.LineRefused = false;
        return true;
    });
}

void FitKnownSlope(CalibrationState& state, double temperature) {
    NeedPoints(state, 1);
    state.LineRefused = true;
    float slope = state.CaliSlope;
    if (slope == 0) {
        const double known = Val(state.KnownSlope);
        const double knownAt = Val(state.KnownSlopeTemp);
        slope = ToSingle(Divide(known * (273.15 + temperature), 273.15 + knownAt));
    }
    state.CaliEo = Finite(state.CaliE[1] - double{slope} * state.CaliLogC[1]);
    state.CaliSlope = slope;
    state.LineRefused = false;
}

bool FitBestCurve(IseCalibration& calibration, Prompts& prompts) {
    calibration.CurveRefused = true;
    return Guarded(prompts, [&] {
        const int n = calibration.CaliPoints;
        CollectSums(calibration, n);
        const kelvo::FitSums& sums = calibration.FitSums;
        const double sxz = sums.Sxz;
        const double d = sums.Szz * sums.Sxx - sxz * sxz;
        // Below three different LogC the determinant is 0; the 32-bit Sxz would leave noise in its place.
        if (d == 0 || DifferentLogCs(calibration) < 3) return Refuse(prompts, NoCurve);
        const double b = Finite((sums.Szz * sums.Sxy - sxz * sums.Szy) / d);
        const float a = ToSingle((sums.Sxx * sums.Szy - sxz * sums.Sxy) / d);
        calibration.FitC = Finite((sums.SumE - b * sums.SumL - a * sums.SumL2) / n);
        calibration.FitB = b;
        calibration.FitA = a;
        calibration.CurveRefused = false;
        return true;
    });
}

std::optional<std::string> ShowCorrelation(const IseCalibration& calibration, Prompts& prompts, int n) {
    const kelvo::FitSums& sums = calibration.FitSums;
    if (sums.Sxx == 0 || n == 0 || sums.Syy == 0) {
        prompts.Message(CorrelationZero);
        return std::nullopt;
    }
    const double q = (sums.Sxy / sums.Sxx) * (sums.SumEL - sums.SumL * sums.SumE / n) / sums.Syy;
    if (q < 0) {
        prompts.Message(CorrelationNegative);
        return std::nullopt;
    }
    return Format(std::sqrt(q), "#0.000");
}

std::optional<SigmaTexts> ShowSigmas(const IseCalibration& calibration, Prompts& prompts, int n) {
    const kelvo::FitSums& sums = calibration.FitSums;
    const double d = n * sums.SumL2 - sums.SumL * sums.SumL;
    const double cross = n * sums.SumEL - sums.SumE * sums.SumL;
    const double q = d == 0 ? -1 : (n * sums.SumE2 - sums.SumE * sums.SumE) - cross * cross / d;
    const double w = d * (n - 2);
    if (q < 0 || !(w > 0)) {
        prompts.Message(SigmasRefused);
        return std::nullopt;
    }
    const double s = static_cast<float>(std::sqrt(q) / n);
    return SigmaTexts{Format(n * s / std::sqrt(w), "#0.000"),
                      Format(n * s * std::sqrt(sums.SumL2) / std::sqrt(w * n), "#0.000")};
}

float MaxLogC(const IseCalibration& calibration) {
    if (calibration.CaliPoints < 1) return 0;
    float largest = calibration.CaliLogC[1];
    for (int i = 2; i <= calibration.CaliPoints; ++i)
        largest = std::max(largest, calibration.CaliLogC[At(i)]);
    return largest;
}

float MinLogC(const IseCalibration& calibration) {
    if (calibration.CaliPoints < 1) return 0;
    float smallest = calibration.CaliLogC[1];
    for (int i = 2; i <= calibration.CaliPoints; ++i)
        smallest = std::min(smallest, calibration.CaliLogC[At(i)]);
    return smallest;
}

void SortPairs(int first, int last, std::vector<float>& keys, std::vector<float>& other) {
    for (int i = first; i <= last; ++i) {
        for (int j = first; j <= last; ++j) {
            if (!(keys[At(i)] < keys[At(j)])) continue;
            std::swap(keys[At(i)], keys[At(j)]);
            std::swap(other[At(i)], other[At(j)]);
        }
    }
}

double ConcFromPotential(StateOf<const Navigation, const IseCalibration> state, int n, float e) {
    const Navigation& navigation = state;
    const IseCalibration& calibration = state;
    NeedPoints(state, std::max<int>(n, calibration.CaliPoints));
    if (n < 1 || calibration.CaliPoints < 1) throw RuntimeError(ErrorNumber::Subscript);
    std::vector<float> mv = calibration.CaliE;
    std::vector<float> ppm = calibration.CaliPpm;
    if (calibration.CaliPoints == 1) {
        // The divisor is the point's LogC, not a slope: this is how Kelvo defines its one-point recording.
        return Finite(std::pow(10.0, Divide(double{e} - mv[1], calibration.CaliLogC[1])));
    }
    if (n < 2) throw RuntimeError(ErrorNumber::Subscript);
    SortPairs(1, calibration.CaliPoints, mv, ppm);

    int i = 1;
    while (i <= n && e > mv[At(i)])
        ++i;
    if (i <= n - 1 || i == 1) {
        if (e == mv[At(i)]) return ppm[At(i)];
    } else if (e == mv[At(i - 1)]) {
        return ppm[At(i - 1)];
    }

    const std::size_t j = At(std::clamp(i, 2, n));
    const double e0 = mv[j - 1], e1 = mv[j];
    if (navigation.pHMode == -1) {
        if (e0 == e1) return -1;
        return (e - e0) * (double{ppm[j]} - ppm[j - 1]) / (e1 - e0) + ppm[j - 1];
    }
    const double log0 = Log10(ppm[j - 1]), log1 = Log10(ppm[j]);
    if (log0 == log1) return -1;
    const double slope = (e1 - e0) / (log1 - log0);
    return Finite(std::pow(10.0, log0 + Divide(e - e0, slope)));
}

int DifferentLogCs(const IseCalibration& calibration) {
    const auto first = calibration.CaliLogC.begin() + 1;
    std::vector<float> values(first, first + calibration.CaliPoints);
    std::sort(values.begin(), values.end());
    return static_cast<int>(std::unique(values.begin(), values.end()) - values.begin());
}

std::string SlopeText(const IseCalibration& calibration) {
    return Format(calibration.CaliSlope, "##0.00");
}

float RememberedSlope(const IseCalibration& calibration) {
    if (calibration.LineRefused) return 0;
    return static_cast<float>(Val(Format(calibration.CaliSlope, "#0.00")));
}

std::string RefusedFitRemark(const IseCalibration& calibration) {
    const bool line = calibration.LineRefused;
    const bool curve = calibration.CurveRefused && calibration.BestFitCurve == 1;
    if (calibration.CaliPoints < 1 || !(line || curve)) return {};
    const bool oldSlope = line && calibration.CaliSlope != 0;
    const bool oldResults = curve ? calibration.FitA != 0 : oldSlope && calibration.LinearFit == 1;
    const char* const lacks = line && curve ? "neither a straight line nor a best-fit curve"
                              : line        ? "no straight line"
                                            : "no best-fit curve";
    const char* const so = oldSlope && oldResults ? "slope and results are of an earlier calibration"
                           : oldSlope             ? "the slope is of an earlier calibration"
                           : oldResults           ? "the results are of an earlier calibration"
                           : curve                ? "there are no results"
                                                  : "there is no slope";
    return std::string("These points have ") + lacks + ": " + so + ".";
}

std::string PairingRemark(const IseCalibration& calibration) {
    bool crossed = calibration.PairsCrossed;
    for (int i = 1; i <= calibration.CaliPoints && !crossed; ++i)
        for (int j = 1; j <= calibration.CaliPoints && !crossed; ++j)
            crossed = calibration.CaliPpm[At(i)] < calibration.CaliPpm[At(j)] &&
                      calibration.CaliLogC[At(i)] > calibration.CaliLogC[At(j)] &&
                      calibration.CaliE[At(i)] != calibration.CaliE[At(j)];
    if (!crossed || calibration.CaliPoints < 2) return {};
    return "The potentials fell in the order of entry: they were sorted, and the fit pairs them with LogC as entered, so the slope is not the electrode's. Entering the standards from the lowest potential up avoids it.";
}

}  // namespace kelvo
