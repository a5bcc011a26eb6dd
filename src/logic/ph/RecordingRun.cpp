#include "ph/RecordingRun.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "calibration/IseCalibration.h"
#include "core/Clock.h"
#include "core/HardwareSettings.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/Settings.h"
#include "core/Tables.h"
#include "ph/PhCalibration.h"
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

void RecordingRun::Begin(RecordingKind kind, const RecordingPlan& plan, std::array<std::string, 2> doubts) {
    kind_ = kind;
    plan_ = plan;
    doubts_ = std::move(doubts);
    pointCount_ = PointsOfPeriod(plan.period);
    on_ = kind == RecordingKind::Ise ? std::array<bool, 2>{true, false} : plan.electrode;
    for (int i = 0; i < 2; ++i)
        lines_[At(i)] = ReadUncalibratedLine(paths_.IniPath, i);
    points_.clear();
    quality_.clear();
    points_.reserve(At(pointCount_) + 1);
    quality_.reserve(At(pointCount_) + 1);
    gaps_ = {};
    average_ = ReadingAverage();
    ResizeAverage();
}

void RecordingRun::ResizeAverage() {
    if (reading_.ReadAvg < 1) reading_.ReadAvg = 1;
    average_.Resize(reading_.ReadAvg);
    average_.Restart();
    averagedOld_ = 0;
}

ReadingFault RecordingRun::JudgeFrame() const {
    ReadingFault fault;
    fault.frameAge = inputs_.frameAge();
    fault.old = !fault.frameAge || *fault.frameAge > std::min(OldSeconds, IntervalRow(plan_.interval).Seconds());
    fault.oldInAverage = averagedOld_ > 0;
    return fault;
}

RecordingRun::Outcome RecordingRun::Sample(const DateTime& now, const RecordingGap& gap) {
    if (Complete()) return Outcome::Full;
    RecordingPoint point;
    point.n = Taken();
    point.time = ClockText(now);
    PointQuality quality;
    const ReadingFault frame = JudgeFrame();
    for (int k = 0; k < Channels(); ++k) {
        const std::size_t electrode = At(2 * k), sensor = electrode + 1;
        if (on_[At(k)]) {
            average_.ReadChannels(reading_.Reading, 2 * k, 2 * k + 1);
        } else {
            average_.AvgReading[electrode] = reading_.Reading[electrode];
            average_.AvgReading[sensor] = reading_.Reading[sensor];
        }
        ReadingFault fault = on_[At(k)] ? frame : ReadingFault();
        if (!Measure(k, average_.AvgReading[electrode], average_.AvgReading[sensor], point, fault))
            return Outcome::BadTable;
        quality.old[At(k)] = on_[At(k)] && (fault.old || fault.oldInAverage);
        quality.words[At(k)] = WordsOf(fault, k);
    }
    quality.remark = WordsOf(gap);
    average_.ReadTick = 1;
    if (frame.old)
        averagedOld_ = average_.Readings() - 1;
    else if (averagedOld_ > 0)
        --averagedOld_;
    gaps_.asleep += gap.asleep;
    gaps_.heldUp += gap.heldUp;
    gaps_.slept += gap.slept;
    points_.push_back(std::move(point));
    quality_.push_back(std::move(quality));
    return Outcome::Taken;
}

std::optional<RecordingPoint> RecordingRun::Peek() const {
    if (!inputs_.frameAge()) return std::nullopt;
    RecordingPoint point;
    for (int k = 0; k < Channels(); ++k) {
        ReadingFault fault;
        if (!Measure(k, reading_.Reading[At(2 * k)], reading_.Reading[At(2 * k + 1)], point, fault))
            return std::nullopt;
    }
    return point;
}

bool RecordingRun::Measure(int k, float mv, float raw, RecordingPoint& point, ReadingFault& fault) const {
    const bool sensorOn = hardware_.Channel[At(2 * k + 2)] == 1;
    point.mv[At(k)] = mv;
    point.celsius[At(k)] =
        sensorOn ? SensorToCelsius(StandardSensor(), raw) : static_cast<float>(Val(hardware_.Temperature[At(k) + 1]));
    // An open input reads far below 0 °C, a shorted one exactly 0.
    fault.sensorOut = sensorOn && (point.celsius[At(k)] < 0 || !(raw > 0));
    fault.recorded = on_[At(k)] || !Connected(k);
    if (!on_[At(k)]) return true;

    if (kind_ == RecordingKind::Ise) {
        fault.onePoint = calibration_.CaliPoints == 1;
        try {
            point.value[0] = ToSingle(inputs_.ppmOf(mv));
        } catch (const RuntimeError&) {
            point.value[0] = NoValue;
        }
        return true;
    }
    fault.uncalibrated = Uncalibrated(k);
    fault.doubt = doubts_[At(k)];
    fault.compensated = plan_.atc[At(k)];
    const auto ph = PhOf(k, mv);
    if (!ph) return false;
    // Without a true temperature the compensation would only carry the fault on.
    const bool corrected = fault.compensated && !fault.sensorOut;
    point.value[At(k)] =
        corrected ? PhTempCorrect(*ph, phCalibration_.PhCaliTemp[At(k) + 1], point.celsius[At(k)]) : *ph;
    return true;
}

RowFacts RecordingRun::Facts(int n) const {
    RowFacts facts = FactsOf(Quality(n));
    const float value = points_[At(n)].value[0];
    if (kind_ == RecordingKind::Ise && std::isfinite(value)) facts.Set(fact::Ppm, TrimStr(value));
    return facts;
}

int RecordingRun::OldPoints() const {
    return static_cast<int>(std::ranges::count_if(quality_, [](const PointQuality& q) { return !q.Fresh(); }));
}

int RecordingRun::SensorOutPoints(int electrode) const {
    return static_cast<int>(
        std::ranges::count_if(quality_, [electrode](const PointQuality& q) { return q.SensorOut(electrode); }));
}

int RecordingRun::EstimatedPoints(int electrode) const {
    return static_cast<int>(
        std::ranges::count_if(quality_, [electrode](const PointQuality& q) { return q.Estimate(electrode); }));
}

int RecordingRun::RemarkedPoints() const {
    return static_cast<int>(std::ranges::count_if(quality_, [](const PointQuality& q) { return !q.remark.empty(); }));
}

std::optional<float> RecordingRun::PhOf(int electrode, float millivolts) const {
    if (Buffers(electrode) != 0)
        return PhFromMv(electrode == 0 ? phCalibration_.Buffers1 : phCalibration_.Buffers2, Buffers(electrode),
                        millivolts);
    const UncalibratedLine& line = lines_[At(electrode)];
    return static_cast<float>(7 + (double{millivolts} - double{line.offset}) * double{line.slope});
}

void RecordingRun::Fill(RecordingKind kind, int pointCount, std::array<bool, 2> electrodes,
                        std::vector<RecordingPoint> points, std::vector<PointQuality> quality) {
    kind_ = kind;
    pointCount_ = pointCount;
    on_ = electrodes;
    points_ = std::move(points);
    if (Taken() > pointCount + 1) points_.resize(At(pointCount) + 1);
    for (int n = 0; n < Taken(); ++n)
        points_[At(n)].n = n;
    quality_ = std::move(quality);
    quality_.resize(points_.size());
    gaps_ = {};
}

}  // namespace kelvo
