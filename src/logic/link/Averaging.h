#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kelvo {

/// The rolling average between the latest frame and what a measuring screen shows. Each reading screen runs one
/// step a tick of its own timer. Electrode channels (0 and 2) are averaged over the last N readings, sensor
/// channels (1 and 3) never. On the first tick the whole window is filled with the first reading, so there is no
/// run-in: N = 3 and readings 10, 20, 30 show 10, 13.33, 20.
class ReadingAverage {
 public:
    /// Makes the windows afresh, all zero, for N readings (below 1 counts as 1); the tick count goes on, so that
    /// a change of N in a running screen averages the zeros away.
    void Resize(int readings);
    /// The next tick is the first.
    void Restart() { ReadTick = 0, filled_ = 0; }

    enum class FirstTick { Takes, WaitsForData };

    /// One step for the channels of that range: the latest frame goes in, `AvgReading` comes out. Counting the
    /// tick is the screen's own last step.
    /// @param fresh  false when the frame has been standing for too long to count as a reading of this tick
    /// @return false when the screen waits for data and a channel is exactly 0 on the first tick, which means that
    /// no frame has come yet: the screen then leaves its tick at once and does not count it.
    bool ReadChannels(const std::array<float, 5>& reading, int firstChannel, int lastChannel,
                      FirstTick firstTick = FirstTick::Takes, bool fresh = true);

    /// Mean of the window in hand after `value` has been shifted in; on tick 0 the mean as it stands. Summed in
    /// ascending order in 32-bit floats.
    float RollingMean(int tick, float value);

    /// N, and how many of the N places hold readings: fewer while zeros, or values that stood for too long, are
    /// still being averaged away.
    int Readings() const { return readings_; }
    int Filled() const { return filled_; }
    /// Channel of exactly 0 that has held the first tick last, -1 when none has.
    int ZeroChannel() const { return zeroChannel_; }

    std::array<float, 5> AvgReading{};
    std::int16_t ReadTick = 0;  ///< ticks since the screen opened; 0 on the first

 private:
    int readings_ = 1, filled_ = 0, zeroChannel_ = -1;
    std::array<std::vector<float>, 4> AvgHistory_ = {{{0, 0}, {0, 0}, {0, 0}, {0, 0}}};  // places 1 to N
    std::vector<float> AvgWork_{0, 0};
};

}  // namespace kelvo
