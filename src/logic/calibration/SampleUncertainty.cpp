#include "calibration/SampleUncertainty.h"

#include <algorithm>
#include <cmath>

#include "calibration/Potentiometry.h"
#include "calibration/Quality.h"
#include "calibration/QualityVerdict.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const SlopeNotToldFromZero = "the slope cannot be told from 0: no uncertainty can be told";
const char* const NotOffTheLine = "no interval on this curve; 'Linear Regression' has one";
const char* const VeryWide = "uncertain by more than a factor of 100 (95 %)";
const char* const NoWeight = "the weight of the ion is not above 0: no uncertainty can be told";
const char* const OutsideRange = "outside the calibrated range";

constexpr double MostDecades = 2;
constexpr double GramsPerLitre = 1000;  // ppm are mg/L

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

}  // namespace

SampleUncertainty::SampleUncertainty(const Standards& standards, std::optional<double> celsius,
                                     const QualityLimits& limits, double factor)
    : line_(FitStraightLine(standards.logC, standards.mv)),
      points_(static_cast<int>(standards.Count())),
      celsius_(celsius),
      temperatureWithin_(limits.temperatureWithin),
      factor_(factor) {
    if (line_ && !ScatterVanishes(*line_)) prediction_ = InversePrediction::Of(*line_);
    if (!prediction_) noInterval_ = WhyNone(standards, line_);
    if (standards.Count() == 0) return;
    const auto [low, high] = std::minmax_element(standards.mv.begin(), standards.mv.end());
    lowest_ = *low;
    highest_ = *high;
}

SampleUncertainty SampleUncertainty::OfCalibration(const AppState& state, const QualityLimits& limits) {
    const bool ion = state.IonIndex >= 0 && state.IonIndex < IonRows;
    const double factor = ion ? GramsPerLitre * state.Ions.weights[static_cast<std::size_t>(state.IonIndex)] : 1;
    SampleUncertainty source(StandardsOf(state), CalibrationCelsius(state), limits, factor);
    const bool curve = state.LinearFit != 1 && (state.PartlyLinearFit == 1 || state.BestFitCurve == 1);
    if (curve) source.GiveNone(NotOffTheLine);
    if (!(factor > 0)) source.GiveNone(NoWeight);
    return source;
}

void SampleUncertainty::GiveNone(const char* why) {
    prediction_.reset();
    noInterval_ = why;
}

std::optional<double> SampleUncertainty::Concentration(double mv) const {
    if (!line_ || line_->slope == 0) return std::nullopt;
    const double value = factor_ * std::pow(10.0, line_->meanX + (mv - line_->meanY) / line_->slope);
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::string SampleUncertainty::Remarks(double mv, std::optional<double> celsius) const {
    std::string words;
    if (points_ > 1 && (mv < lowest_ || mv > highest_)) Append(words, OutsideRange);
    if (celsius && celsius_ && std::abs(*celsius - *celsius_) > temperatureWithin_)
        Append(words, "more than " + TrimStr(temperatureWithin_) + " °C from the calibration");
    return words;
}

Uncertainty SampleUncertainty::Of(double mv, std::optional<double> celsius) const {
    Uncertainty out;
    out.words = noInterval_;
    if (prediction_) {
        const InverseEstimate estimate = prediction_->At(mv);
        const double low = factor_ * std::pow(10.0, estimate.x - estimate.halfWidth);
        const double high = factor_ * std::pow(10.0, estimate.x + estimate.halfWidth);
        if (estimate.halfWidth <= MostDecades && low > 0 && std::isfinite(high))
            out.interval = Uncertainty::Interval{low, high};
        else
            out.words = VeryWide;
    }
    const std::string remarks = Remarks(mv, celsius);
    if (!remarks.empty()) Append(out.words, remarks);
    return out;
}

std::string UncertaintyText(const std::string& concentration, const char* unit, const Uncertainty& uncertainty) {
    if (!uncertainty.interval) return uncertainty.words;
    const auto [low, high] = *uncertainty.interval;
    const double halfWidth = (high - low) / 2;
    std::string line = Trim(concentration) + " " + unit + ", " + BoundWithPlacesOf(low, halfWidth) + " to " +
                       BoundWithPlacesOf(high, halfWidth) + " (95 %)";
    if (!uncertainty.words.empty()) line += "; " + uncertainty.words;
    return line;
}

std::string SampleIntervalLine(const AppState& state, const QualityLimits& limits, float mv, const std::string& ppm,
                               const std::string& molar, const std::string& celsius) {
    if (state.LinearFit != 1 && state.PartlyLinearFit != 1 && state.BestFitCurve != 1) return {};
    const auto source = SampleUncertainty::OfCalibration(state, limits);
    const auto sampleCelsius = Trim(celsius).empty() ? std::nullopt : std::optional(Val(celsius));
    const bool ion = state.IonIndex != NoIon;
    return UncertaintyText(ion ? ppm : molar, ion ? "ppm" : "mol/L", source.Of(mv, sampleCelsius));
}

std::string LiveIntervalLine(const AppState& state, const QualityLimits& limits, float mv, const std::string& celsius) {
    const SampleOutcome outcome = SampleFromPotential(state, mv);
    if (!outcome.value) return {};
    const bool ion = state.IonIndex != NoIon;
    const std::string value =
        ion ? Format(outcome.value->ppm, "#0.00") + " ppm" : Format(outcome.value->molar, "#.00E-0") + " mol/L";
    const std::string shown = value.substr(0, value.find(' '));
    const std::string line = SampleIntervalLine(state, limits, mv, shown, shown, celsius);
    return "Live: " + (line.starts_with(value) ? line : value + "; " + line);
}

}  // namespace kelvo
