#pragma once

#include <array>
#include <string>

namespace kelvo {

/// Which kind of recording runs: pH of one or two electrodes, or ppm of the ion electrode.
enum class RecordingKind { Ph, Ise };

/// Choices of the setup that a recording starts with. Indexes are those of the setup's lists; -1 when nothing was
/// picked, which counts as the first interval and the first period.
struct RecordingPlan {
    int interval = -1;                ///< 0 to 8: 2, 5, 10, 30 s, 1, 2, 5, 10, 30 min
    int period = -1;                  ///< 0 to 3: 20, 50, 100, 200 points
    int scale = -1;                   ///< row of the range list
    std::array<bool, 2> electrode{};  ///< pH electrodes ticked
    std::array<bool, 2> atc{};        ///< their temperature compensation ticked
};

/// How an interval is kept: the timer ticks every `timerMs`, and every (`divider` + 1)-th tick takes a point.
struct RecordingInterval {
    const char* text;  ///< "2 Sec."
    int timerMs;
    int divider;
    int step;  ///< the number in the text

    double Seconds() const { return timerMs / 1000.0 * (divider + 1); }
    /// Whether `step` counts minutes; a 2 s interval has step 2 and no divider, a 2 min one step 2 and divider 1.
    bool InMinutes() const { return step < 2 || divider != 0; }
};
/// Row of the interval list; an index without a row gives the first.
const RecordingInterval& IntervalRow(int index);

/// N of a period: 20, 50, 100, 200; an index without a row gives 20. A run holds N + 1 points, 0 to N.
int PointsOfPeriod(int index);
/// N that shows a file of that many rows: up to 20 give 20, up to 50, 100, 200 the next; none above 200, which keeps
/// the N from before (`before`).
int PointsOfFile(int rows, int before);
constexpr int MostPoints = 200;

/// Vertical axis: value at its foot and its height, in pH or ppm.
struct RecordingScale {
    float low = 0, span = 0;
};
/// pH: 0-7, 3-10, 4-7.5, 7-14, else 0-14. ISE: 0-100, 0-1000, 0-10000 for 1 to 3, else 0-10 ppm.
RecordingScale ScaleRow(RecordingKind kind, int index);

/// Captions of the scale menu, "0 ... 7"; an ISE recording has no fifth.
std::array<const char*, 5> ScaleCaptions(RecordingKind kind);

/// Time that the count of points stands for, not the clock's: "01:06:40". Hours go past 99.
class ElapsedTime {
 public:
    void Clear() { seconds_ = minutes_ = hours_ = 0; }
    void Step(const RecordingInterval& interval);
    std::string Text() const;

 private:
    int seconds_ = 0, minutes_ = 0, hours_ = 0;
};
/// Elapsed time of a point: 0 for point 0.
std::string ElapsedAt(int point, const RecordingInterval& interval);

}  // namespace kelvo
