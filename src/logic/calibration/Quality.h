#pragma once

#include <optional>
#include <string>
#include <vector>

#include "calibration/LinearRange.h"
#include "calibration/Nernst.h"
#include "calibration/QualityLimits.h"
#include "calibration/WrongStandard.h"
#include "statistics/StraightLine.h"

namespace kelvo {

/// What a calibration is judged from: the points as the line is fitted to them, and what is known of the electrode.
struct QualityInput {
    Standards standards;
    std::vector<double> ppm;  ///< of the standards as they were entered, by index; empty: not known
    double gramsPerMole = 0;  ///< of the ion, 0 not known
    double knownSlope = 0;    ///< mV per decade, with one point; 0 none
    IonResponse ion;
    std::optional<double> celsius;  ///< of the calibration; none: 25 °C is assumed
    bool crossed = false;           ///< potentials and LogC are paired across (`PairingRemark`)
};

/// Whether a line has a scatter below what the screens show, 0.0005 mV: its points lie exactly on it, 32-bit rounding
/// apart, and say nothing on uncertainty.
bool ScatterVanishes(const StraightLine& line);

/// One standard beside the line.
struct QualityPoint {
    double logC = 0, mv = 0;
    double fitted = 0, residual = 0;    ///< mV
    double percent = 0;                 ///< residual as % of the concentration, 100·(10^(residual/S) − 1)
    double leverage = 0;                ///< 0 to 1
    std::optional<double> studentised;  ///< externally, as of `LeftOut`
    std::optional<double> slopeChange;  ///< % by which the slope changes without it; none: no line without it
    bool marked = false;  ///< the change is beyond the limit, it carries the line alone, or it is to be suspected
};

/// How good a calibration is, in figures. Every figure is finite.
struct CalibrationQuality {
    enum class Basis {
        NoPoints,
        KnownSlope,        ///< one point: the slope was typed, not measured
        OneConcentration,  ///< all standards have one LogC: no line
        OnePotential,      ///< all standards have one potential: slope 0
        TwoPoints,         ///< a line without a degree of freedom
        Line,
    };
    Basis basis = Basis::NoPoints;
    StraightLine line;              ///< from two points on
    double slope = 0;               ///< of the line, or the known one
    std::optional<double> theory;   ///< theoretical slope, mV per decade; none: charge or temperature unusable
    std::optional<double> percent;  ///< slope as % of it, negative for the wrong sign
    double celsius = 25;
    bool celsiusAssumed = false;
    std::vector<QualityPoint> points;
    double largestResidual = 0;  ///< mV, without sign
    int concentrations = 0;      ///< different ones among the standards
    bool answers = true;         ///< the potentials change with the concentration as those of an electrode
    WrongStandard wrong;
    /// The 95 % interval of one reading in the middle of the standards, as % of its concentration down (below 0) and
    /// up; none when no uncertainty follows from the line.
    struct Reach {
        double down = 0, up = 0;
    };
    std::optional<Reach> sample;
    LinearRange range;
    std::optional<LowEndFit> lowEnd;  ///< where the standards have a line and the electrode answers

    bool PerfectFit() const { return basis == Basis::Line && ScatterVanishes(line); }
};

/// The same as the low-end fit sees it, when samples are read off that: its slope, its interval, and neither standards
/// that leave the line at the low end nor those that are wrong by the line. As it is where there is no such fit.
CalibrationQuality JudgedByLowEnd(CalibrationQuality quality);

CalibrationQuality JudgeQuality(const QualityInput& input, const QualityLimits& limits);

}  // namespace kelvo
