#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calibration/LinearRange.h"
#include "calibration/QualityLimits.h"
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
    std::string words;  ///< parts joined by "; ", empty when there is nothing to say
};

/// The 95 % interval of a sample's concentration by inverse prediction from the calibration line. One is made when the
/// calibration is known; asking it costs no fit.
///
/// The line is worked out in LogC, so the interval of the concentration is a factor up and down. It holds the scatter
/// of the standards and of the readings of the sample; what all standards have in common (a wrong stock solution) it
/// cannot see. It is told where the line is known to hold: not outside the standards, nor where the electrode leaves
/// the line at the low end.
class SampleUncertainty {
 public:
    /// Of the text of `Line()`; none when it is no such text.
    static std::optional<SampleUncertainty> OfLine(const std::string& text);
    /// Of standards and the line through them. @param factor  unit of the interval per 10^x of the standards
    SampleUncertainty(const Standards& standards, std::optional<StraightLine> line, std::optional<double> celsius,
                      const QualityLimits& limits, double factor = 1);

    /// What is known of the calibration beyond its line.
    struct Surroundings {
        const LinearRange& range;
        const char* unit;
        std::string doubt;  ///< on the calibration as a whole; it goes with every sample
        bool onCurve;       ///< samples are read off segments or a best-fit curve, which have no interval
    };
    void LookAt(Surroundings surroundings);

    /// @param readings  potentials of one sample, mV, at least one
    /// @param celsius   temperature of the sample, none when not told
    Uncertainty Of(std::span<const double> readings, std::optional<double> celsius) const;
    Uncertainty Of(double mv, std::optional<double> celsius) const { return Of({&mv, 1}, celsius); }
    /// Concentration that the line gives, unrounded; none where there is no line.
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
    /// Where the electrode leaves its line at the low end.
    struct LowEnd {
        double mv = 0, slope = 0;
        std::string words;
    };

    SampleUncertainty() = default;
    void GiveNone(const char* why);
    void LookAtLowEnd(const LinearRange& range, const char* unit);
    std::string Place(double mv) const;
    std::string Basis(const InverseEstimate& estimate) const;

    std::optional<StraightLine> line_;
    std::optional<InversePrediction> prediction_;
    std::string noInterval_;           ///< why, when there is none for any sample
    double lowest_ = 0, highest_ = 0;  ///< mV of the standards
    int points_ = 0;
    std::optional<double> celsius_;
    double temperatureWithin_ = 0;
    double factor_ = 1;
    std::vector<LowEnd> lowEnds_;  ///< the lowest first
    std::string doubt_;            ///< on the calibration as a whole
};

namespace fact {
inline constexpr const char* Value = "value";              ///< the result, with as many places as its interval
inline constexpr const char* Line = "line";                ///< `SampleUncertainty::Line()`
inline constexpr const char* CaliCelsius = "calicelsius";  ///< °C that the calibration was made at
inline constexpr const char* StandardsU = "standardsu";    ///< relative standard uncertainty of all standards, %
inline constexpr const char* Standards = "standards";      ///< their lot and expiry date, in words
}  // namespace fact

}  // namespace kelvo
