#include "calibration/CurveFit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

void NeedPoints(const AppState& state, int n) {
    const bool held =
        n >= 0 && At(n) < state.CaliE.size() && At(n) < state.CaliLogC.size() && At(n) < state.CaliPpm.size();
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

void CollectSums(AppState& state, int n) {
    NeedPoints(state, n);
    kelvo::FitSums sums;
    double sumL3 = 0;
    for (int i = 1; i <= n; ++i) {
        const double x = state.CaliLogC[At(i)];
        const double y = state.CaliE[At(i)];
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
    const bool spreadX = !AllEqual(state.CaliLogC, n);
    const bool spreadY = !AllEqual(state.CaliE, n);
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
    state.FitSums = sums;
}

bool FitLinear(AppState& state, Prompts& prompts) {
    state.LineRefused = true;
    return Guarded(prompts, [&] {
        const int n = state.CaliPoints;
        CollectSums(state, n);
        const kelvo::FitSums& sums = state.FitSums;
        if (sums.Sxx == 0) return Refuse(prompts, NoLine);
        const float slope = ToSingle(Divide(sums.Sxy, sums.Sxx));
        state.CaliEo = Finite((sums.SumE - sums.SumL * slope) / n);
        state.CaliSlope = slope;
        state.LineRefused = false;
        return true;
    });
}

void FitKnownSlope(AppState& state, double temperature) {
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

bool FitBestCurve(AppState& state, Prompts& prompts) {
    state.CurveRefused = true;
    return Guarded(prompts, [&] {
        const int n = state.CaliPoints;
        CollectSums(state, n);
        const kelvo::FitSums& sums = state.FitSums;
        const double sxz = sums.Sxz;
        const double d = sums.Szz * sums.Sxx - sxz * sxz;
        // Below three different LogC the determinant is 0; the 32-bit Sxz would leave noise in its place.
        if (d == 0 || DifferentLogCs(state) < 3) return Refuse(prompts, NoCurve);
        const double b = Finite((sums.Szz * sums.Sxy - sxz * sums.Szy) / d);
        const float a = ToSingle((sums.Sxx * sums.Szy - sxz * sums.Sxy) / d);
        state.FitC = Finite((sums.SumE - b * sums.SumL - a * sums.SumL2) / n);
        state.FitB = b;
        state.FitA = a;
        state.CurveRefused = false;
        return true;
    });
}

std::optional<std::string> ShowCorrelation(const AppState& state, Prompts& prompts, int n) {
    const kelvo::FitSums& sums = state.FitSums;
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

std::optional<SigmaTexts> ShowSigmas(const AppState& state, Prompts& prompts, int n) {
    const kelvo::FitSums& sums = state.FitSums;
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

float MaxLogC(const AppState& state) {
    if (state.CaliPoints < 1) return 0;
    float largest = state.CaliLogC[1];
    for (int i = 2; i <= state.CaliPoints; ++i)
        largest = std::max(largest, state.CaliLogC[At(i)]);
    return largest;
}

float MinLogC(const AppState& state) {
    if (state.CaliPoints < 1) return 0;
    float smallest = state.CaliLogC[1];
    for (int i = 2; i <= state.CaliPoints; ++i)
        smallest = std::min(smallest, state.CaliLogC[At(i)]);
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

double ConcFromPotential(const AppState& state, int n, float e) {
    NeedPoints(state, std::max<int>(n, state.CaliPoints));
    if (n < 1 || state.CaliPoints < 1) throw RuntimeError(ErrorNumber::Subscript);
    std::vector<float> mv = state.CaliE;
    std::vector<float> ppm = state.CaliPpm;
    if (state.CaliPoints == 1) {
        // The divisor is the point's LogC, not a slope: this is how Kelvo defines its one-point recording.
        return Finite(std::pow(10.0, Divide(double{e} - mv[1], state.CaliLogC[1])));
    }
    if (n < 2) throw RuntimeError(ErrorNumber::Subscript);
    SortPairs(1, state.CaliPoints, mv, ppm);

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
    if (state.pHMode == -1) {
        if (e0 == e1) return -1;
        return (e - e0) * (double{ppm[j]} - ppm[j - 1]) / (e1 - e0) + ppm[j - 1];
    }
    const double log0 = Log10(ppm[j - 1]), log1 = Log10(ppm[j]);
    if (log0 == log1) return -1;
    const double slope = (e1 - e0) / (log1 - log0);
    return Finite(std::pow(10.0, log0 + Divide(e - e0, slope)));
}

int DifferentLogCs(const AppState& state) {
    const auto first = state.CaliLogC.begin() + 1;
    std::vector<float> values(first, first + state.CaliPoints);
    std::sort(values.begin(), values.end());
    return static_cast<int>(std::unique(values.begin(), values.end()) - values.begin());
}

std::optional<float> PartialSlope(const AppState& state, int i) {
    if (i < 2 || i > state.CaliPoints) throw RuntimeError(ErrorNumber::Subscript);
    const double run = double{state.CaliLogC[At(i)]} - state.CaliLogC[At(i - 1)];
    if (run == 0) return std::nullopt;
    const double slope = (double{state.CaliE[At(i)]} - state.CaliE[At(i - 1)]) / run;
    if (std::abs(slope) > std::numeric_limits<float>::max()) return std::nullopt;
    return static_cast<float>(slope);
}

std::string SlopeText(const AppState& state) {
    return Format(state.CaliSlope, "##0.00");
}

float RememberedSlope(const AppState& state) {
    if (state.LineRefused) return 0;
    return static_cast<float>(Val(Format(state.CaliSlope, "#0.00")));
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

std::string PairingRemark(const AppState& state) {
    bool crossed = state.PairsCrossed;
    for (int i = 1; i <= state.CaliPoints && !crossed; ++i)
        for (int j = 1; j <= state.CaliPoints && !crossed; ++j)
            crossed = state.CaliPpm[At(i)] < state.CaliPpm[At(j)] && state.CaliLogC[At(i)] > state.CaliLogC[At(j)] &&
                      state.CaliE[At(i)] != state.CaliE[At(j)];
    if (!crossed || state.CaliPoints < 2) return {};
    return "The potentials fell in the order of entry: they were sorted, and the fit pairs them with LogC as entered, so the slope is not the electrode's. Entering the standards from the lowest potential up avoids it.";
}

}  // namespace kelvo
