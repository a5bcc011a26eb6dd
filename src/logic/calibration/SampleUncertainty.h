#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calibration/LinearRange.h"
#include "calibration/QualityLimits.h"
#include "calibration/ResultCurve.h"
#include "core/RowFacts.h"
#include "core/StateOf.h"
#include "statistics/InversePrediction.h"

namespace kelvo {

/// How sure a concentration is: an interval or the words why there is none, and what else to bear in mind.
struct Uncertainty {
    struct Interval {
        double low = 0, high = 0;
    };
    std::optional<Interval> interval;  ///< in the unit of the source; 95 of 100 such intervals hold the true value
    std::string basis;  ///< "scatter of 4 standards and of 1 reading", what the interval holds; empty without one
    /// A result of a curve in another width than its interval may lie a rounding beside it: widens it to that.
    void Hold(double value);
    std::string words;  ///< parts joined by "; ", empty when there is nothing to say
};

/// The 95 % interval of a sample's concentration by inverse prediction from the curve that it is read off: the
/// calibration line, segments, the best-fit curve or the low-end fit. One is made when the calibration is known; asking
/// it costs no fit.
///
/// The curve is worked out in LogC, so the interval of the concentration is a factor up and down. It holds the scatter
/// of the standards and of the readings of the sample; what all standards have in common (a wrong stock solution) it
/// cannot see. It is told where the line is known to hold: not outside the standards, nor where the electrode leaves
/// the line at the low end or saturates at the top; the other curves go with it there.
class SampleUncertainty {
 public:
    /// Of the text of `Line()`; none when it is no such text.
    static std::optional<SampleUncertainty> OfLine(const std::string& text);
    /// Of standards and the line through them. @param factor  unit of the interval per 10^x of the standards
    SampleUncertainty(Standards standards, std::optional<StraightLine> line, std::optional<double> celsius,
                      const QualityLimits& limits, double factor = 1);

    /// What is known of the calibration beyond its line.
    struct Surroundings {
        const LinearRange& range;
        const char* unit;
        std::string doubt;  ///< on the calibration as a whole; it goes with every sample
        /// Samples are read off this one instead of the line.
        std::optional<ResultCurve::Kind> curve = std::nullopt;
    };
    void LookAt(Surroundings surroundings);

    /// @param readings  potentials of one sample, mV, at least one
    /// @param celsius   temperature of the sample, none when not told
    Uncertainty Of(std::span<const double> readings, std::optional<double> celsius) const;
    Uncertainty Of(double mv, std::optional<double> celsius) const { return Of({&mv, 1}, celsius); }
    /// Concentration that line or curve gives, unrounded; none where there is neither.
    std::optional<double> Concentration(double mv) const;
    /// What the curve adds to the uncertainty of a potential read off it, and what a reading there is worth.
    struct Reading {
        double logC = 0;         ///< of mol/L
        double deviation = 0;    ///< standard deviation of LogC by the curve alone
        double mvPerDecade = 0;  ///< slope there, without sign
        double scatter = 0;      ///< of the standards about the curve, mV
        int freedom = 0;         ///< degrees of freedom behind the two
        int standards = 0;
    };
    /// None where the curve tells no interval.
    std::optional<Reading> ReadOff(double mv) const;
    /// All that the interval of a sample is worked out from, as numbers joined by blanks; empty when there is none.
    std::string Line() const;

 private:
    /// Where the electrode leaves its line: at that potential, towards those that differ from it against the slope.
    struct End {
        double mv = 0, slope = 0;
        std::string words;
        bool limit = false;  ///< the detection limit
    };

    SampleUncertainty() = default;
    void GiveNone(const char* why);
    void LookAtEnds(const LinearRange& range, const char* unit);
    std::string Outside(double mv) const;
    std::string AtEnds(double mv) const;
    bool HasInterval() const { return prediction_.has_value() || (curve_ && noInterval_.empty()); }
    /// x ± of the line, or the limits of the curve.
    std::optional<CurveEstimate> Predict(std::span<const double> readings) const;
    std::string Basis(const CurveEstimate& estimate) const;

    std::optional<StraightLine> line_;
    std::optional<InversePrediction> prediction_;
    std::optional<ResultCurve> curve_;  ///< in the place of the line
    std::string noInterval_;            ///< why, when there is none for any sample
    double lowest_ = 0, highest_ = 0;   ///< mV of the standards
    Standards standards_;
    int points_ = 0;
    std::optional<double> celsius_;
    double temperatureWithin_ = 0;
    double factor_ = 1;
    std::vector<End> ends_;  ///< the lowest first
    std::string doubt_;      ///< on the calibration as a whole
};

namespace fact {
inline constexpr const char* Value = "value";              ///< the result, with as many places as its interval
inline constexpr const char* Line = "line";                ///< `SampleUncertainty::Line()`
inline constexpr const char* CaliCelsius = "calicelsius";  ///< °C that the calibration was made at
inline constexpr const char* StandardsU = "standardsu";    ///< relative standard uncertainty of all standards, %
inline constexpr const char* Standards = "standards";      ///< their lot and expiry date, in words
inline constexpr const char* Curve = "curve";  ///< name of the curve it was read off, of other ones than the line
}  // namespace fact

}  // namespace kelvo
