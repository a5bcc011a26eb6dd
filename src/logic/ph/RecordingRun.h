#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/AppState.h"
#include "core/Clock.h"
#include "link/Averaging.h"
#include "ph/RecordingPlan.h"
#include "ph/RecordingRow.h"

namespace kelvo {

/// What a recording takes from the modules beside this one.
struct RecordingInputs {
    /// ppm of a potential by the calibration in use. @throws RuntimeError when it has none there.
    std::function<double(float)> ppmOf;
    /// Seconds since the newest good frame; none when none has come since the link was started.
    std::function<std::optional<double>()> frameAge;
};

/// How good a recorded point is.
struct PointQuality {
    std::optional<double> frameAge = 0;  ///< seconds that its frame was old; none: no frame had come at all
    bool old = false;                    ///< older than the interval or than three seconds
    bool oldInAverage = false;           ///< the rolling average still holds an old frame
    int missedBefore = 0;                ///< points before it that were due while the machine slept

    bool Fresh() const { return !old && !oldInAverage; }
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
    RecordingRun(AppState& state, const RecordingInputs& inputs) : state_(state), inputs_(inputs) {}

    /// Nothing is recorded; windows are empty and filled by the first reading.
    void Begin(RecordingKind kind, const RecordingPlan& plan);

    enum class Outcome {
        Taken,
        Full,      ///< the run holds all its points
        BadTable,  ///< a buffer table has no line; nothing was stored
    };
    /// Takes the next point from the newest frame. @param missed points that fell due before it and were not taken
    Outcome Sample(const DateTime& now, int missed = 0);
    /// `ReadAvg` has been set anew: the next reading fills the window.
    void ResizeAverage();

    /// Shows points from elsewhere, a file. Points beyond N are left out.
    void Fill(RecordingKind kind, int pointCount, std::array<bool, 2> electrodes, std::vector<RecordingPoint> points);

    RecordingKind Kind() const { return kind_; }
    const RecordingPlan& Plan() const { return plan_; }
    int PointCount() const { return pointCount_; }                  ///< N; a whole run holds N + 1 points
    int Taken() const { return static_cast<int>(points_.size()); }  ///< index of the next point
    bool Complete() const { return Taken() > pointCount_; }
    const std::vector<RecordingPoint>& Points() const { return points_; }
    const PointQuality& Quality(int n) const { return quality_[static_cast<std::size_t>(n)]; }
    bool On(int electrode) const { return on_[static_cast<std::size_t>(electrode)]; }
    int OldPoints() const { return oldPoints_; }  ///< points that are not fresh
    int MissedPoints() const { return missed_; }  ///< points never taken, the machine was asleep
    bool SensorLost(int sensor) const { return sensorLost_[static_cast<std::size_t>(sensor)]; }
    bool Uncalibrated(int electrode) const { return kind_ == RecordingKind::Ph && Buffers(electrode) == 0; }

 private:
    int Buffers(int electrode) const { return state_.BufferCount[static_cast<std::size_t>(electrode) + 1]; }
    bool TakeChannel(int k, RecordingPoint& point);
    std::optional<float> PhOf(int electrode, float millivolts) const;
    PointQuality Judge(int missed);

    AppState& state_;
    const RecordingInputs& inputs_;
    RecordingKind kind_ = RecordingKind::Ph;
    RecordingPlan plan_;
    int pointCount_ = 20;
    std::array<bool, 2> on_{}, sensorLost_{};
    std::array<UncalibratedLine, 2> lines_;
    ReadingAverage average_;
    int averagedOld_ = 0;  ///< points to come whose average still holds an old frame
    int oldPoints_ = 0, missed_ = 0;
    std::vector<RecordingPoint> points_;
    std::vector<PointQuality> quality_;
};

}  // namespace kelvo
