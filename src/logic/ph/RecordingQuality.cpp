#include "ph/RecordingQuality.h"

#include <algorithm>
#include <cmath>

#include "calibration/IseCalibration.h"
#include "text/Number.h"

namespace kelvo {
namespace {

// Parts of the words that are known again when they are read back.
const char* const FrameOld = "frame ";
const char* const NoFrame = "no frame had come";
const char* const OldInAverage = "average holds an old frame";
const char* const SensorGone = " not connected";
const char* const NotRecorded = "not recorded";
const char* const NoCalibration = "no calibration";
const char* const OnePoint = "one-point calibration";

/// Half a second of sleep cannot be told from the noise of two clocks.
constexpr double ShortestSleep = 0.5;
/// A point that is taken this much behind its moment shows another second.
constexpr double ShortestDelay = 1;

void Join(std::string& all, const std::string& part) {
    if (part.empty()) return;
    all += (all.empty() ? "" : "; ") + part;
}

/// Whether one of the parts begins with these words.
bool Says(const std::string& words, const char* begin) {
    const std::string framed = "; " + words;
    return framed.find(std::string("; ") + begin) != std::string::npos;
}

std::string SensorName(int electrode) {
    return "sensor " + TrimStr(electrode + 1);
}

std::string Missing(int points, const char* why) {
    if (points == 0) return {};
    return TrimStr(points) + (points == 1 ? " point" : " points") + " missing before it: " + why;
}

std::string Seconds(double seconds) {
    return Format(seconds, "0") + " s";
}

}  // namespace

RecordingGap GapOf(int missed, double late, double slept, double interval) {
    RecordingGap gap;
    gap.late = late;
    gap.slept = slept >= ShortestSleep ? slept : 0;
    gap.asleep = std::min(missed, static_cast<int>(std::lround(gap.slept / interval)));
    gap.heldUp = missed - gap.asleep;
    return gap;
}

bool PointQuality::SensorOut(int electrode) const {
    return Says(words[static_cast<std::size_t>(electrode)], (SensorName(electrode) + SensorGone).c_str());
}

bool PointQuality::Estimate(int electrode) const {
    const std::string& said = words[static_cast<std::size_t>(electrode)];
    return Says(said, NoCalibration) || Says(said, OnePoint);
}

bool PointQuality::Recorded(int electrode) const {
    return !Says(words[static_cast<std::size_t>(electrode)], NotRecorded);
}

std::string WordsOf(const ReadingFault& fault, int electrode) {
    std::string all = fault.recorded ? "" : NotRecorded;
    if (fault.old) Join(all, fault.frameAge ? FrameOld + Seconds(*fault.frameAge) + " old" : NoFrame);
    if (!fault.old && fault.oldInAverage) Join(all, OldInAverage);
    if (fault.sensorOut)
        Join(all, SensorName(electrode) + SensorGone + (fault.compensated ? ": no ATC" : ": its °C are not real"));
    if (fault.uncalibrated) Join(all, std::string(NoCalibration) + ": an estimate");
    if (fault.onePoint) Join(all, std::string(OnePoint) + ": no concentration to rely on");
    Join(all, fault.doubt);
    return all;
}

std::string WordsOf(const RecordingGap& gap) {
    std::string all = Missing(gap.asleep, "the machine was asleep");
    Join(all, Missing(gap.heldUp, "the program was held up"));
    if (gap.asleep == 0 && gap.slept > 0) Join(all, "the machine slept " + Seconds(gap.slept) + " before it");
    if (all.empty() && gap.late >= ShortestDelay) all = "taken " + Seconds(gap.late) + " late: the program was held up";
    return all;
}

RowFacts FactsOf(const PointQuality& quality) {
    RowFacts facts;
    facts.Set(fact::Quality1, quality.words[0]);
    facts.Set(fact::Quality2, quality.words[1]);
    facts.Set(fact::Remark, quality.remark);
    return facts;
}

PointQuality QualityOf(const RowFacts& facts) {
    PointQuality quality;
    quality.words = {facts.Get(fact::Quality1), facts.Get(fact::Quality2)};
    quality.remark = facts.Get(fact::Remark);
    for (std::size_t k = 0; k < 2; ++k)
        for (const char* begin : {FrameOld, NoFrame, OldInAverage})
            quality.old[k] = quality.old[k] || Says(quality.words[k], begin);
    return quality;
}

std::string OnePointRemark(const IseCalibration& calibration) {
    if (calibration.CaliPoints != 1) return {};
    return "The calibration has one point: a recording by it shows no concentration to rely on.";
}

}  // namespace kelvo
