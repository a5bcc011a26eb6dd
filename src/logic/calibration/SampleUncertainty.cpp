#include "calibration/SampleUncertainty.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <utility>

#include "calibration/CalibrationState.h"
#include "calibration/CustomCharge.h"
#include "calibration/Potentiometry.h"
#include "calibration/Quality.h"
#include "calibration/QualityVerdict.h"
#include "core/IonSettings.h"
#include "core/StateOf.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const SlopeNotToldFromZero = "the slope cannot be told from 0: no uncertainty can be told";
const char* const VeryWide = "uncertain by more than a factor of 100 (95 %)";
const char* const NoWeight = "the weight of the ion is not above 0: no uncertainty can be told";
const char* const OutsideRange = "outside the calibrated range";

constexpr double MostDecades = 2;

/// Why a line of these standards gives no interval for any sample; empty when it does.
std::string WhyNone(const Standards& standards, const std::optional<StraightLine>& line) {
    if (standards.Count() == 0) return {};
    if (standards.Count() == 1) return text::KnownSlopeOnly;
    if (!line) return text::OneConcentration;
    if (line->slope == 0) return text::OnePotential;
    if (standards.Count() == 2) return text::TwoPoints;
    if (ScatterVanishes(*line)) return text::OnTheLine;
    return SlopeNotToldFromZero;
}

void Append(std::string& words, const std::string& more) {
    words += (words.empty() ? "" : "; ") + more;
}

/// A concentration to two digits, as a limit is worth.
std::string TwoDigits(double value) {
    return WithPlacesOf(value, value);
}

}  // namespace

void Uncertainty::Hold(double value) {
    if (!interval) return;
    interval->low = std::min(interval->low, value);
    interval->high = std::max(interval->high, value);
}

SampleUncertainty::SampleUncertainty(Standards standards, std::optional<StraightLine> line,
                                     std::optional<double> celsius, const QualityLimits& limits, double factor)
    : line_(line),
      standards_(std::move(standards)),
      points_(static_cast<int>(standards_.Count())),
      celsius_(celsius),
      temperatureWithin_(limits.temperatureWithin),
      factor_(factor) {
    if (line_ && !ScatterVanishes(*line_)) prediction_ = InversePrediction::Of(*line_);
    if (!prediction_) noInterval_ = WhyNone(standards_, line_);
    if (standards_.Count() == 0) return;
    const auto [low, high] = std::minmax_element(standards_.mv.begin(), standards_.mv.end());
    lowest_ = *low;
    highest_ = *high;
}

void SampleUncertainty::LookAt(Surroundings surroundings) {
    if (surroundings.curve && standards_.Count() > 0) {
        prediction_.reset();
        curve_ = ResultCurve(*surroundings.curve, standards_);
        noInterval_ = curve_->WhyNone();
    }
    if (!(factor_ > 0)) GiveNone(NoWeight);
    LookAtEnds(surroundings.range, surroundings.unit);
    doubt_ = std::move(surroundings.doubt);
}

void SampleUncertainty::GiveNone(const char* why) {
    prediction_.reset();
    noInterval_ = why;
}

void SampleUncertainty::LookAtEnds(const LinearRange& range, const char* unit) {
    if (!range.found || !(factor_ > 0)) return;
    if (range.saturates) ends_.push_back({range.line.At(range.toLogC), -range.line.slope, "above the linear range"});
    if (range.below < 1) return;
    // At the limit the electrode sees as much beside the ion as of it, so it stands log10(2) of a decade above its
    // level there.
    if (range.limit == LinearRange::Limit::Reached)
        ends_.push_back({range.line.At(range.detectionLogC) + range.line.slope * std::log10(2.0), range.line.slope,
                         "at or below the detection limit of " +
                             TwoDigits(factor_ * std::pow(10.0, range.detectionLogC)) + " " + unit,
                         true});
    ends_.push_back({range.line.At(range.fromLogC), range.line.slope, "below the linear range"});
}

std::optional<double> SampleUncertainty::Concentration(double mv) const {
    double logC = 0;
    if (curve_) {
        const auto told = curve_->Predict({&mv, 1});
        if (!told) return std::nullopt;
        logC = told->x;
    } else if (!line_ || line_->slope == 0) {
        return std::nullopt;
    } else {
        logC = line_->meanX + (mv - line_->meanY) / line_->slope;
    }
    const double value = factor_ * std::pow(10.0, logC);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<SampleUncertainty::Reading> SampleUncertainty::ReadOff(double mv) const {
    if (!HasInterval()) return std::nullopt;
    if (curve_) {
        const auto at = curve_->PlaceOf(mv);
        if (!at) return std::nullopt;
        const double slope = std::abs(at->slope), scatter = curve_->Scatter();
        return Reading{at->x, scatter * std::sqrt(at->spread) / slope, slope, scatter, curve_->Freedom(), points_};
    }
    const double slope = std::abs(line_->slope), fromMiddle = (mv - line_->meanY) / line_->slope;
    const double deviation =
        line_->residualDeviation / slope * std::sqrt(1.0 / line_->n + fromMiddle * fromMiddle / line_->sxx);
    return Reading{line_->meanX + fromMiddle, deviation, slope, line_->residualDeviation, line_->Freedom(), line_->n};
}

std::string SampleUncertainty::Outside(double mv) const {
    return points_ > 1 && (mv < lowest_ || mv > highest_) ? OutsideRange : "";
}

/// What is told of a potential beyond the linear range. The line is not known to hold there; a curve that passes the
/// standards there is, down to the limit.
std::string SampleUncertainty::AtEnds(double mv) const {
    for (const End& end : ends_) {
        if ((mv - end.mv) * end.slope > 0) continue;
        return curve_ && !end.limit ? "" : end.words;
    }
    return {};
}

std::optional<CurveEstimate> SampleUncertainty::Predict(std::span<const double> readings) const {
    if (curve_) return curve_->Predict(readings);
    const InverseEstimate estimate = prediction_->Of(readings);
    if (!(estimate.halfWidth <= MostDecades)) return std::nullopt;
    return CurveEstimate{.x = estimate.x,
                         .deviation = estimate.deviation,
                         .low = estimate.x - estimate.halfWidth,
                         .high = estimate.x + estimate.halfWidth,
                         .readings = estimate.readings,
                         .scattersMore = estimate.scattersMore};
}

Uncertainty SampleUncertainty::Of(std::span<const double> readings, std::optional<double> celsius) const {
    const double mv = std::accumulate(readings.begin(), readings.end(), 0.0) / static_cast<double>(readings.size());
    Uncertainty out;
    out.words = noInterval_;
    std::string place = Outside(mv);
    const std::string beyondRange = AtEnds(mv);
    if (!beyondRange.empty()) Append(place, beyondRange);
    const bool beyond = curve_ ? !Outside(mv).empty() : !place.empty();
    if (HasInterval() && !beyond) {
        const auto estimate = Predict(readings);
        const double low = estimate ? factor_ * std::pow(10.0, estimate->low) : 0;
        const double high = estimate ? factor_ * std::pow(10.0, estimate->high) : 0;
        if (low > 0 && std::isfinite(high)) {
            out.interval = Uncertainty::Interval{low, high};
            out.basis = Basis(*estimate);
        } else {
            out.words = VeryWide;
        }
    }
    if (HasInterval() && beyond) place += ": no interval";
    if (!place.empty()) Append(out.words, place);
    if (celsius && celsius_ && std::abs(*celsius - *celsius_) > temperatureWithin_)
        Append(out.words, "more than " + TrimStr(temperatureWithin_) + " °C from the calibration");
    if (!doubt_.empty()) Append(out.words, doubt_);
    return out;
}

std::string SampleUncertainty::Basis(const CurveEstimate& estimate) const {
    return (curve_ ? curve_->Basis() : "scatter of " + std::to_string(points_) + " standards") + " and of " +
           std::to_string(estimate.readings) + (estimate.readings == 1 ? " reading" : " readings") +
           (estimate.scattersMore ? ", which is larger than the standards'" : "");
}

std::string SampleUncertainty::Line() const {
    if (!HasInterval()) return {};
    if (curve_) return curve_->Text() + " " + TrimStr(factor_);
    std::string text = std::to_string(line_->n);
    for (const double figure :
         {line_->slope, line_->meanX, line_->meanY, line_->sxx, line_->residualDeviation, factor_, lowest_, highest_})
        text += " " + TrimStr(figure);
    return text;
}

std::optional<SampleUncertainty> SampleUncertainty::OfLine(const std::string& text) {
    const std::size_t last = text.rfind(' ');
    if (auto curve = last == std::string::npos ? std::nullopt : ResultCurve::Of(text.substr(0, last))) {
        const double factor = Val(std::string_view(text).substr(last + 1));
        if (!(factor > 0)) return std::nullopt;
        SampleUncertainty source(curve->Points(), std::nullopt, std::nullopt, {}, factor);
        source.curve_ = std::move(curve);
        source.noInterval_.clear();
        return source;
    }
    std::array<double, 9> figures{};
    std::string_view rest = text;
    for (double& figure : figures) {
        figure = Val(rest);
        rest.remove_prefix(std::min(rest.find(' '), rest.size()));
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    }
    StraightLine line;
    constexpr double MostStandards = 1000;
    line.n = static_cast<int>(std::clamp(figures[0], 0.0, MostStandards));
    line.slope = figures[1];
    line.meanX = figures[2];
    line.meanY = figures[3];
    line.sxx = figures[4];
    line.residualDeviation = figures[5];
    if (!(line.sxx > 0) || !(line.residualDeviation > 0) || !(figures[6] > 0)) return std::nullopt;
    line.slopeDeviation = line.residualDeviation / std::sqrt(line.sxx);
    SampleUncertainty source;
    source.prediction_ = InversePrediction::Of(line);
    if (!source.prediction_) return std::nullopt;
    source.line_ = line;
    source.points_ = line.n;
    source.factor_ = figures[6];
    source.lowest_ = figures[7];
    source.highest_ = figures[8];
    return source;
}

}  // namespace kelvo
