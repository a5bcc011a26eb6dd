#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calibration/IseCalibration.h"
#include "calibration/QualityVerdict.h"
#include "calibration/SampleUncertainty.h"
#include "core/StateOf.h"
#include "core/Tables.h"

namespace kelvo {

/// One standard as it is used, at the width of the calibration file.
struct CalibrationPoint {
    float mv = 0, logC = 0, ppm = 0, molar = 0;
    bool operator==(const CalibrationPoint&) const = default;
};

/// What a calibration is made of: its points with the curves fitted to them, and what is told of it.
struct CalibrationData {
    enum class Curve { None, Line, Segments, BestFit, LowEnd };

    std::vector<CalibrationPoint> points;
    Curve curve = Curve::None;  ///< samples are read off it
    double intercept = 0;       ///< mV
    float slope = 0;            ///< mV per decade; typed where there is one point
    float a = 0;                ///< E = a·LogC² + b·LogC + c
    double b = 0, c = 0;
    bool refused = false;  ///< the points have no line: intercept and slope are of earlier ones
    bool crossed = false;  ///< potentials and LogC are paired across (`PairingRemark`)
    int ion = NoIon;
    std::string ionName;
    float gramsPerMole = 0;  ///< 0 not known
    std::string celsius;     ///< that it was made at, as text; empty: not told
    std::string workingCelsius;
    std::string operatorName, date, electrode, file;
    std::array<std::string, 2> reference;
    std::vector<LeftOutStandard> leftOut;  ///< measured, and not among the points
    StandardsTold told;

    bool operator==(const CalibrationData&) const = default;
};

/// A calibration as everything takes it that measures, judges, shows, writes or prints by it. It is fitted and judged
/// once, when it is made, and does not change afterwards.
struct Calibration : CalibrationData {
    Calibration(CalibrationData data, const QualityLimits& limits, int customCharge);

    QualityLimits limits;  ///< that it is judged by
    QualityInput input;
    CalibrationQuality quality;
    Verdict verdict;
    SampleUncertainty uncertainty;  ///< in `Unit()`

    std::optional<StraightLine> Line() const;
    /// "ppm", or "mol/L" when no ion is selected.
    const char* Unit() const { return ion != NoIon ? "ppm" : "mol/L"; }
    /// "low-end fit", the curve that samples are read off; empty for the straight line and without one.
    std::string CurveName() const;
    /// ppm of a concentration; 0 without an ion. @throws RuntimeError 6, 9 as `MolarToPpm`
    double Ppm(double molar) const;
    /// Slope between the points i − 1 and i, i from 1, mV per decade; none when both have one LogC.
    std::optional<double> SegmentSlope(std::size_t i) const;
    /// "calibration doubtful: the slope is 71.2 % of the theoretical one"; empty for every other.
    std::string Doubt() const { return DoubtOf(verdict); }
};

CalibrationData CalibrationDataOf(const CalibrationState& state);

/// The calibration in use. @param customCharge  charge of the ion of row 25, 0 not known
Calibration CalibrationOf(const CalibrationState& state, const QualityLimits& limits = {}, int customCharge = 0);

/// The calibration in use with limits and charge of the settings, made anew only when it has changed. The charge of a
/// custom ion counts from the moment it is given, in whatever window; the limits are those of the latest
/// `ReadSettings`.
class CalibrationInUse {
 public:
    explicit CalibrationInUse(StateOf<const CalibrationState, const Paths> state) : state_(state) { ReadSettings(); }

    void ReadSettings();
    std::shared_ptr<const Calibration> Get();

 private:
    StateOf<const CalibrationState, const Paths> state_;
    QualityLimits limits_;
    int charge_ = 0;
    std::shared_ptr<const Calibration> made_;
};

}  // namespace kelvo
