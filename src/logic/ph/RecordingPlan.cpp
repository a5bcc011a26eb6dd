#include "ph/RecordingPlan.h"

#include <cstddef>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr std::array<RecordingInterval, 9> Intervals = {{{"2 Sec.", 2000, 0, 2},
                                                         {"5 Sec.", 5000, 0, 5},
                                                         {"10 Sec.", 10000, 0, 10},
                                                         {"30 Sec.", 30000, 0, 30},
                                                         {"1 Min.", 60000, 0, 1},
                                                         {"2 Min.", 60000, 1, 2},
                                                         {"5 Min.", 60000, 4, 5},
                                                         {"10 Min.", 60000, 9, 10},
                                                         {"30 Min.", 60000, 29, 30}}};

constexpr std::array<int, 4> Periods = {20, 50, 100, 200};

constexpr std::array<RecordingScale, 5> PhScales = {{{0, 7}, {3, 7}, {4, 3.5f}, {7, 7}, {0, 14}}};
constexpr std::array<RecordingScale, 4> IseScales = {{{0, 10}, {0, 100}, {0, 1000}, {0, 10000}}};

constexpr bool Has(std::size_t rows, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < rows;
}

}  // namespace

const RecordingInterval& IntervalRow(int index) {
    return Intervals[Has(Intervals.size(), index) ? static_cast<std::size_t>(index) : 0];
}

int PointsOfPeriod(int index) {
    return Periods[Has(Periods.size(), index) ? static_cast<std::size_t>(index) : 0];
}

int PointsOfFile(int rows, int before) {
    for (const int points : Periods)
        if (rows <= points) return points;
    return before;
}

RecordingScale ScaleRow(RecordingKind kind, int index) {
    if (kind == RecordingKind::Ph)
        return Has(PhScales.size(), index) ? PhScales[static_cast<std::size_t>(index)] : PhScales.back();
    return Has(IseScales.size(), index) ? IseScales[static_cast<std::size_t>(index)] : IseScales.front();
}

std::array<const char*, 5> ScaleCaptions(RecordingKind kind) {
    if (kind == RecordingKind::Ph) return {"0 ... 7", "3 ... 10", "4 ... 7.5", "7 ... 14", "0 ... 14"};
    return {"0 ... 10", "0 ... 100", "0 ... 1000", "0 ... 10000", nullptr};
}

void ElapsedTime::Step(const RecordingInterval& interval) {
    constexpr int Sixty = 60;
    (interval.InMinutes() ? minutes_ : seconds_) += interval.step;
    minutes_ += seconds_ / Sixty;
    seconds_ %= Sixty;
    hours_ += minutes_ / Sixty;
    minutes_ %= Sixty;
}

std::string ElapsedTime::Text() const {
    return Format(double(hours_), "#00") + ":" + Format(double(minutes_), "00") + ":" + Format(double(seconds_), "00");
}

std::string ElapsedAt(int point, const RecordingInterval& interval) {
    ElapsedTime elapsed;
    for (int i = 0; i < point; ++i)
        elapsed.Step(interval);
    return elapsed.Text();
}

}  // namespace kelvo
