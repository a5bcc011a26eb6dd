#include "calibration/Quality.h"

#include <algorithm>
#include <cmath>

#include "calibration/CurveFit.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Basis = CalibrationQuality::Basis;

Basis BasisOf(const Standards& standards, const std::optional<StraightLine>& line) {
    if (standards.Count() == 0) return Basis::NoPoints;
    if (standards.Count() == 1) return Basis::KnownSlope;
    if (!line) return Basis::OneConcentration;
    if (line->slope == 0) return Basis::OnePotential;
    return standards.Count() == 2 ? Basis::TwoPoints : Basis::Line;
}

/// 100·(10^decades − 1), held where a number of a table can still show it.
double PercentOf(double decades) {
    constexpr double MostDecades = 6;
    return 100 * std::expm1(std::log(10.0) * std::clamp(decades, -MostDecades, MostDecades));
}

QualityPoint PointOf(const StraightLine& line, double logC, double mv, double mostChange) {
    QualityPoint point;
    point.logC = logC;
    point.mv = mv;
    point.fitted = line.At(logC);
    point.residual = mv - point.fitted;
    point.leverage = std::min(1.0, line.Leverage(logC));
    if (line.slope != 0) point.percent = PercentOf(point.residual / line.slope);
    if (line.Freedom() < 1) return point;
    const auto without = line.SlopeWithout(logC, mv);
    if (without && line.slope != 0) point.slopeChange = 100 * (*without - line.slope) / std::abs(line.slope);
    point.marked = !without || (point.slopeChange && std::abs(*point.slopeChange) > mostChange);
    return point;
}

}  // namespace

bool ScatterVanishes(const StraightLine& line) {
    constexpr double Shown = 0.0005;
    return line.residualDeviation < Shown;
}

Standards StandardsOf(const AppState& state) {
    const auto points = static_cast<std::size_t>(std::max<int>(0, state.CaliPoints));
    const std::size_t held = std::min({points + 1, state.CaliE.size(), state.CaliLogC.size()});
    Standards standards;
    for (std::size_t i = 1; i < held; ++i) {
        constexpr double FarthestLogC = 100, FarthestMv = 1e6;
        if (std::isnan(state.CaliLogC[i]) || std::isnan(state.CaliE[i])) continue;
        standards.logC.push_back(std::clamp<double>(state.CaliLogC[i], -FarthestLogC, FarthestLogC));
        standards.mv.push_back(std::clamp<double>(state.CaliE[i], -FarthestMv, FarthestMv));
    }
    return standards;
}

std::optional<double> CalibrationCelsius(const AppState& state) {
    for (const std::string* text : {&state.FileTemp, &state.CaliTemp})
        if (Trim(*text).find_first_of("0123456789") != std::string::npos) return Val(*text);
    return std::nullopt;
}

QualityInput QualityInputOf(const AppState& state, int customCharge) {
    QualityInput input;
    input.standards = StandardsOf(state);
    input.knownSlope = state.CaliSlope;
    input.ion = state.IonIndex == CustomIonRow && customCharge != 0
                    ? ResponseOf(state.Ions.names[CustomIonRow], customCharge)
                    : ResponseOf(state.IonIndex);
    input.celsius = CalibrationCelsius(state);
    input.crossed = !PairingRemark(state).empty();
    return input;
}

CalibrationQuality JudgeQuality(const QualityInput& input, const QualityLimits& limits) {
    constexpr double Assumed = 25;
    CalibrationQuality quality;
    const auto line = FitStraightLine(input.standards.logC, input.standards.mv);
    quality.basis = BasisOf(input.standards, line);
    quality.celsiusAssumed = !input.celsius;
    quality.celsius = input.celsius.value_or(Assumed);
    quality.theory = NernstSlope(input.ion.charge, quality.celsius);
    if (quality.basis == Basis::KnownSlope) quality.slope = input.knownSlope;
    if (line) {
        quality.line = *line;
        quality.slope = line->slope;
        for (std::size_t i = 0; i < input.standards.Count(); ++i) {
            const QualityPoint point =
                PointOf(*line, input.standards.logC[i], input.standards.mv[i], limits.slopeChange);
            quality.points.push_back(point);
            if (std::abs(point.residual) <= quality.largestResidual) continue;
            quality.largestResidual = std::abs(point.residual);
            quality.worst = i;
        }
        quality.range = FindLinearRange(input.standards, limits.linearWithin);
    }
    if (quality.theory && quality.basis != Basis::NoPoints && quality.basis != Basis::OneConcentration)
        quality.percent = 100 * quality.slope / *quality.theory;
    return quality;
}

}  // namespace kelvo
