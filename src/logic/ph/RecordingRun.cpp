#include "ph/RecordingRun.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "core/Settings.h"
#include "ph/PhValue.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double OldSeconds = 3;
constexpr float NoValue = std::numeric_limits<float>::quiet_NaN();

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

std::string ClockText(const DateTime& time) {
    return TimeText(time) + ":" + Format(double(time.second), "00");
}

}  // namespace

UncalibratedLine ReadUncalibratedLine(const std::string& iniFile, int electrode) {
    const auto key = [&](const char* name) {
        return Val(ReadSetting("Latest Calibration Value", name + TrimStr(electrode), iniFile));
    };
    const double slope = key("V");
    const double offset = key("Z");
    const bool usable = slope != 0 && std::abs(slope) <= std::numeric_limits<float>::max() &&
                        std::abs(offset) <= std::numeric_limits<float>::max();
    return usable ? UncalibratedLine{static_cast<float>(slope), static_cast<float>(offset)} : UncalibratedLine{};
}

void RecordingRun::Begin(RecordingKind kind, const RecordingPlan& plan) {
    kind_ = kind;
    plan_ = plan;
    pointCount_ = PointsOfPeriod(plan.period);
    on_ = kind == RecordingKind::Ise ? std::array<bool, 2>{true, false} : plan.electrode;
    for (int i = 0; i < 2; ++i)
        lines_[At(i)] = ReadUncalibratedLine(state_.IniPath, i);
    points_.clear();
    quality_.clear();
    points_.reserve(At(pointCount_) + 1);
    quality_.reserve(At(pointCount_) + 1);
    oldPoints_ = missed_ = 0;
    sensorLost_ = {};
    average_ = ReadingAverage();
    ResizeAverage();
}

void RecordingRun::ResizeAverage() {
    if (state_.ReadAvg < 1) state_.ReadAvg = 1;
    average_.Resize(state_.ReadAvg);
    average_.Restart();
    averagedOld_ = 0;
}

PointQuality RecordingRun::Judge(int missed) {
    PointQuality quality;
    quality.frameAge = inputs_.frameAge();
    quality.old = !quality.frameAge || *quality.frameAge > std::min(OldSeconds, IntervalRow(plan_.interval).Seconds());
    quality.oldInAverage = averagedOld_ > 0;
    quality.missedBefore = missed;
    return quality;
}

RecordingRun::Outcome RecordingRun::Sample(const DateTime& now, int missed) {
    if (Complete()) return Outcome::Full;
    RecordingPoint point;
    point.n = Taken();
    point.time = ClockText(now);
    const int channels = kind_ == RecordingKind::Ph ? 2 : 1;
    for (int k = 0; k < channels; ++k)
        if (!TakeChannel(k, point)) return Outcome::BadTable;
    const PointQuality quality = Judge(missed);
    average_.ReadTick = 1;
    if (quality.old)
        averagedOld_ = average_.Readings() - 1;
    else if (averagedOld_ > 0)
        --averagedOld_;
    oldPoints_ += quality.Fresh() ? 0 : 1;
    missed_ += missed;
    points_.push_back(std::move(point));
    quality_.push_back(quality);
    return Outcome::Taken;
}

bool RecordingRun::TakeChannel(int k, RecordingPoint& point) {
    const int electrode = 2 * k, sensor = electrode + 1;
    if (on_[At(k)]) {
        average_.ReadChannels(state_.Reading, electrode, sensor);
    } else {
        average_.AvgReading[At(electrode)] = state_.Reading[At(electrode)];
        average_.AvgReading[At(sensor)] = state_.Reading[At(sensor)];
    }
    const bool sensorOn = state_.Channel[At(2 * k + 2)] == 1;
    point.mv[At(k)] = average_.AvgReading[At(electrode)];
    point.celsius[At(k)] = sensorOn ? SensorToCelsius(state_.Sensor, average_.AvgReading[At(sensor)])
                                    : static_cast<float>(Val(state_.Temperature[At(k) + 1]));
    sensorLost_[At(k)] = sensorOn && point.celsius[At(k)] < 0;
    if (!on_[At(k)]) return true;

    if (kind_ == RecordingKind::Ise) {
        try {
            point.value[0] = ToSingle(inputs_.ppmOf(point.mv[0]));
        } catch (const RuntimeError&) {
            point.value[0] = NoValue;
        }
        return true;
    }
    const auto ph = PhOf(k, point.mv[At(k)]);
    if (!ph) return false;
    // Without a true temperature the compensation would only carry the fault on.
    const bool corrected = plan_.atc[At(k)] && !sensorLost_[At(k)];
    point.value[At(k)] = corrected ? PhTempCorrect(*ph, state_.PhCaliTemp[At(k) + 1], point.celsius[At(k)]) : *ph;
    return true;
}

std::optional<float> RecordingRun::PhOf(int electrode, float millivolts) const {
    if (Buffers(electrode) != 0)
        return PhFromMv(electrode == 0 ? state_.Buffers1 : state_.Buffers2, Buffers(electrode), millivolts);
    const UncalibratedLine& line = lines_[At(electrode)];
    return static_cast<float>(7 + (double{millivolts} - double{line.offset}) * double{line.slope});
}

void RecordingRun::Fill(RecordingKind kind, int pointCount, std::array<bool, 2> electrodes,
                        std::vector<RecordingPoint> points) {
    kind_ = kind;
    pointCount_ = pointCount;
    on_ = electrodes;
    points_ = std::move(points);
    if (Taken() > pointCount + 1) points_.resize(At(pointCount) + 1);
    for (int n = 0; n < Taken(); ++n)
        points_[At(n)].n = n;
    quality_.assign(points_.size(), PointQuality());
    oldPoints_ = missed_ = 0;
    sensorLost_ = {};
}

}  // namespace kelvo
