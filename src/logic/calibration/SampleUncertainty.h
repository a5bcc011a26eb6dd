#pragma once

#include <optional>
#include <string>

#include "calibration/LinearRange.h"
#include "calibration/QualityLimits.h"
#include "core/AppState.h"
#include "statistics/InversePrediction.h"

namespace kelvo {

/// How sure a concentration is: an interval or the words why there is none, and what else to bear in mind.
struct Uncertainty {
    struct Interval {
        double low = 0, high = 0;
    };
    std::optional<Interval> interval;  ///< in the unit of the source; 95 of 100 such intervals hold the true value
    std::string words;                 ///< parts joined by "; ", empty when there is nothing to say
};

/// The 95 % interval of a sample's concentration by inverse prediction from the calibration line. One is made when the
/// calibration is known; asking it costs no fit.
///
/// The line is worked out in LogC, so the interval of the concentration is a factor up and down. It rests on one
/// reading of the sample and on the scatter of the standards; what both have in common (a wrong stock solution) it
/// cannot see.
class SampleUncertainty {
 public:
    /// Of the calibration in use, in ppm, or in mol/L when no ion is selected. Off the line (segments, best-fit curve)
    /// there is no interval.
    static SampleUncertainty OfCalibration(const AppState& state, const QualityLimits& limits);
    /// Of standards alone. @param factor  unit of the interval per 10^x of the standards
    SampleUncertainty(const Standards& standards, std::optional<double> celsius, const QualityLimits& limits,
                      double factor = 1);

    /// @param mv       potential of the sample
    /// @param celsius  temperature of the sample, none when not told
    Uncertainty Of(double mv, std::optional<double> celsius) const;
    /// Concentration that the line gives, unrounded; none where there is no line.
    std::optional<double> Concentration(double mv) const;

 private:
    void GiveNone(const char* why);
    std::string Remarks(double mv, std::optional<double> celsius) const;

    std::optional<StraightLine> line_;
    std::optional<InversePrediction> prediction_;
    std::string noInterval_;           ///< why, when there is none for any sample
    double lowest_ = 0, highest_ = 0;  ///< mV of the standards
    int points_ = 0;
    std::optional<double> celsius_;
    double temperatureWithin_ = 0;
    double factor_ = 1;
};

/// "35.60 ppm, 34.1 to 37.2 (95 %)", the bounds with as many places as their width is worth; words follow behind "; ".
/// Without an interval the words alone.
/// @param concentration  as the box shows it
std::string UncertaintyText(const std::string& concentration, const char* unit, const Uncertainty& uncertainty);

/// The same for a sample of the calibration screen; empty when no curve is active or the potential gives no result.
/// @param ppm, molar, celsius  texts of the sample boxes
std::string SampleIntervalLine(const AppState& state, const QualityLimits& limits, float mv, const std::string& ppm,
                               const std::string& molar, const std::string& celsius);

/// The same for a potential that is just being read, "Live: 35.60 ppm, 34.1 to 37.2 (95 %)"; without an interval the
/// concentration and the words. Empty when it gives no result.
std::string LiveIntervalLine(const AppState& state, const QualityLimits& limits, float mv, const std::string& celsius);

}  // namespace kelvo
