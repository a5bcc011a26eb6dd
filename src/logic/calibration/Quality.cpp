#include "calibration/Quality.h"

#include <algorithm>
#include <cmath>

#include "statistics/CurvePrediction.h"
#include "statistics/InversePrediction.h"
#include "statistics/LeftOut.h"

namespace kelvo {
namespace {

using Basis = CalibrationQuality::Basis;
constexpr double FarthestReach = 2;  ///< decades

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

QualityPoint PointOf(const StraightLine& line, const Standards& standards, std::size_t i, double mostChange) {
    QualityPoint point;
    point.logC = standards.logC[i];
    point.mv = standards.mv[i];
    point.fitted = line.At(point.logC);
    point.residual = point.mv - point.fitted;
    point.leverage = std::min(1.0, line.Leverage(point.logC));
    if (line.slope != 0) point.percent = PercentOf(point.residual / line.slope);
    if (line.Freedom() < 1) return point;
    const auto left = LeaveOut(standards.logC, standards.mv, i);
    if (left) point.studentised = left->studentised;
    if (left && line.slope != 0) point.slopeChange = 100 * (left->others.slope - line.slope) / std::abs(line.slope);
    point.marked = !left || (point.slopeChange && std::abs(*point.slopeChange) > mostChange);
    return point;
}

/// Whether the potentials spread by a tenth of what they would have to, with the ion's charge or the largest there is.
bool Answers(const Standards& standards, double theory) {
    constexpr double LeastShare = 0.1;
    const auto [low, high] = std::minmax_element(standards.mv.begin(), standards.mv.end());
    const auto [from, to] = std::minmax_element(standards.logC.begin(), standards.logC.end());
    return *high - *low >= LeastShare * std::abs(theory) * (*to - *from);
}

std::optional<CalibrationQuality::Reach> ReachOfSample(const StraightLine& line) {
    if (ScatterVanishes(line)) return std::nullopt;
    const auto prediction = InversePrediction::Of(line);
    if (!prediction) return std::nullopt;
    const double decades = prediction->At(line.meanY).halfWidth;
    return CalibrationQuality::Reach{PercentOf(-decades), PercentOf(decades)};
}

/// A standard below the detection limit, or where the electrode saturates, is none that was made up wrongly; and one
/// that was made up wrongly says nothing on where the electrode leaves its line.
void LookForWrongStandard(const QualityInput& input, const QualityLimits& limits, double leastSlope,
                          CalibrationQuality& quality) {
    using Kind = WrongStandard::Kind;
    using Limit = LinearRange::Limit;
    const Standards& standards = input.standards;
    WrongStandard wrong = FindWrongStandard(standards, quality.theory, input.gramsPerMole, limits);
    const bool below = quality.range.limit == Limit::AtMost || quality.range.limit == Limit::Reached;
    const bool sure = wrong.kind == Kind::Unit || wrong.kind == Kind::Swapped;
    const bool named = wrong.Named();
    if (below && !sure && (!named || standards.logC[wrong.first] < quality.range.fromLogC)) return;
    if (quality.range.saturates && !sure && (!named || standards.logC[wrong.first] > quality.range.toLogC)) return;
    quality.wrong = wrong;
    for (std::size_t i = 0; i < standards.Count(); ++i)
        if (wrong.Is(i)) quality.points[i].marked = true;
    if (!wrong.Named() || wrong.kind == Kind::Swapped) return;
    Standards others;
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        if (i == wrong.first) continue;
        others.logC.push_back(standards.logC[i]);
        others.mv.push_back(standards.mv[i]);
    }
    quality.range = FindLinearRange(others, limits.linearWithin, leastSlope);
}

/// What the points say beyond the figures of their line.
void LookInto(const QualityInput& input, const QualityLimits& limits, CalibrationQuality& quality) {
    constexpr int LargestCharge = 4;
    constexpr double LeastShare = 1.0 / 3;
    const double theory = quality.theory.value_or(*NernstSlope(LargestCharge, 25));
    const Standards& standards = input.standards;
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        quality.points.push_back(PointOf(quality.line, standards, i, limits.slopeChange));
        quality.largestResidual = std::max(quality.largestResidual, std::abs(quality.points[i].residual));
    }
    quality.concentrations = DifferentLogCs(standards);
    quality.answers = Answers(standards, theory);
    const double leastSlope = LeastShare * std::abs(theory);
    quality.range = FindLinearRange(standards, limits.linearWithin, leastSlope);
    if (quality.basis != Basis::Line) return;
    quality.sample = ReachOfSample(quality.line);
    if (!quality.answers) return;
    LookForWrongStandard(input, limits, leastSlope, quality);
    quality.lowEnd = FitLowEnd(standards);
}

}  // namespace

bool ScatterVanishes(const StraightLine& line) {
    constexpr double Shown = 0.0005;
    return line.residualDeviation < Shown;
}

CalibrationQuality JudgedByLowEnd(CalibrationQuality quality) {
    if (!quality.lowEnd) return quality;
    const LowEndFit& fit = *quality.lowEnd;
    quality.slope = fit.slope;
    if (quality.theory) quality.percent = 100 * fit.slope / *quality.theory;
    quality.wrong = {};
    quality.range.limit = LinearRange::Limit::CannotTell;
    quality.range.saturates = false;
    for (QualityPoint& point : quality.points)
        point.marked = false;
    const auto [low, high] = std::ranges::minmax(quality.points, {}, &QualityPoint::logC);
    const double middle = quality.line.meanY;
    const auto estimate = PredictFromCurve(fit, {low.logC, high.logC}, {&middle, 1}, FarthestReach);
    quality.sample.reset();
    if (estimate)
        quality.sample =
            CalibrationQuality::Reach{PercentOf(estimate->low - estimate->x), PercentOf(estimate->high - estimate->x)};
    return quality;
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
        LookInto(input, limits, quality);
    }
    if (quality.theory && quality.basis != Basis::NoPoints && quality.basis != Basis::OneConcentration)
        quality.percent = 100 * quality.slope / *quality.theory;
    return quality;
}

}  // namespace kelvo
