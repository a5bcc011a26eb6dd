#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/HardwareSettings.h"
#include "core/StateOf.h"
#include "link/Averaging.h"
#include "ph/PhCalibration.h"
#include "ph/RecordingPlan.h"
#include "ph/RecordingQuality.h"
#include "ph/RecordingRow.h"

namespace kelvo {

struct DateTime;

/// What a recording takes from the modules beside this one.
struct RecordingInputs {
    /// ppm of a potential by the calibration in use. @throws RuntimeError when it has none there.
    std::function<double(float)> ppmOf;
    /// Seconds since the newest good frame; none when none has come since the link was started.
    std::function<std::optional<double>()> frameAge;
    /// Seconds that the machine has slept since it was started.
    std::function<double()> slept = [] { return 0.0; };
    /// How the file beside a table is written.
    FactsText facts = {};
};

/// Straight line that stands in for an electrode without buffers: pH = 7 + (mV - offset)·slope.
struct UncalibratedLine {
    float slope = -0.4f;  ///< pH per mV
    float offset = 0;     ///< mV
};
/// The pair kept in the settings for electrode 0 or 1; one that is missing, or has the slope 0, gives the usual line.
UncalibratedLine ReadUncalibratedLine(const std::string& iniFile, int electrode);

/// Takes the points of one recording and holds them. Knows neither timers nor files.
class RecordingRun {
 public:
    RecordingRun(
        StateOf<const Paths, const IseCalibration, const PhCalibration, const HardwareSettings, ReadingSettings> state,
        const RecordingInputs& inputs)
        : state_(state),
          paths_(state),
          calibration_(state),
          phCalibration_(state),
          hardware_(state),
          reading_(state),
          inputs_(inputs) {}

    /// Nothing is recorded; windows are empty and filled by the first reading.
    /// @param doubts  of the two electrodes' calibrations, told with every point of theirs
    void Begin(RecordingKind kind, const RecordingPlan& plan, std::array<std::string, 2> doubts = {});

    enum class Outcome {
        Taken,
        Full,      ///< the run holds all its points
        BadTable,  ///< a buffer table has no line; nothing was stored
    };
    /// Takes the next point from the newest frame.
    Outcome Sample(const DateTime& now, const RecordingGap& gap = {});
    /// What the newest frame alone says now, without the average; nothing is stored. None when no frame has come or a
    /// buffer table has no line.
    std::optional<RecordingPoint> Peek() const;
    /// `ReadAvg` has been set anew: the next reading fills the window.
    void ResizeAverage();

    /// Shows points from elsewhere, a file. Points beyond N are left out.
    /// @param quality  of the points, in their order; those that it lacks have nothing against them
    void Fill(RecordingKind kind, int pointCount, std::array<bool, 2> electrodes, std::vector<RecordingPoint> points,
              std::vector<PointQuality> quality = {});

    RecordingKind Kind() const { return kind_; }
    const RecordingPlan& Plan() const { return plan_; }
    int PointCount() const { return pointCount_; }                  ///< N; a whole run holds N + 1 points
    int Taken() const { return static_cast<int>(points_.size()); }  ///< index of the next point
    bool Complete() const { return Taken() > pointCount_; }
    const std::vector<RecordingPoint>& Points() const { return points_; }
    const PointQuality& Quality(int n) const { return quality_[static_cast<std::size_t>(n)]; }
    /// What goes with the row of a point beyond its cells.
    RowFacts Facts(int n) const;
    bool On(int electrode) const { return on_[static_cast<std::size_t>(electrode)]; }
    int OldPoints() const;                             ///< points that are not fresh
    int SensorOutPoints(int electrode) const;          ///< points without its temperature sensor
    int EstimatedPoints(int electrode) const;          ///< points whose value is an estimate
    int RemarkedPoints() const;                        ///< points with a remark on what lies before them
    int AsleepPoints() const { return gaps_.asleep; }  ///< points never taken, the machine was asleep
    int HeldUpPoints() const { return gaps_.heldUp; }  ///< points never taken although it was awake
    double Slept() const { return gaps_.slept; }       ///< seconds that the machine slept during the run
    bool Uncalibrated(int electrode) const { return kind_ == RecordingKind::Ph && Buffers(electrode) == 0; }

 private:
    int Buffers(int electrode) const { return phCalibration_.BufferCount[static_cast<std::size_t>(electrode) + 1]; }
    bool Connected(int electrode) const { return hardware_.Channel[electrode == 0 ? 0 : 3] == 1; }
    int Channels() const { return kind_ == RecordingKind::Ph ? 2 : 1; }
    /// Fills the items of electrode `k` from its potential and the raw value of its sensor; finds what is wrong with
    /// them. @return false when its buffer table has no line
    bool Measure(int k, float mv, float raw, RecordingPoint& point, ReadingFault& fault) const;
    std::optional<float> PhOf(int electrode, float millivolts) const;
    ReadingFault JudgeFrame() const;

    StateOf<const Paths, const IseCalibration, const PhCalibration, const HardwareSettings, ReadingSettings> state_;
    const Paths& paths_;
    const IseCalibration& calibration_;
    const PhCalibration& phCalibration_;
    const HardwareSettings& hardware_;
    ReadingSettings& reading_;
    const RecordingInputs& inputs_;
    RecordingKind kind_ = RecordingKind::Ph;
    RecordingPlan plan_;
    int pointCount_ = 20;
    std::array<bool, 2> on_{};
    std::array<UncalibratedLine, 2> lines_;
    std::array<std::string, 2> doubts_;
    ReadingAverage average_;
    int averagedOld_ = 0;  ///< points to come whose average still holds an old frame
    RecordingGap gaps_;    ///< of the whole run
    std::vector<RecordingPoint> points_;
    std::vector<PointQuality> quality_;
};

}  // namespace kelvo
