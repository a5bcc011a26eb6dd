#include "link/Averaging.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

constexpr auto Waits = ReadingAverage::FirstTick::WaitsForData;

TEST(Averaging, FirstReadingFillsTheWindow) {
    const std::pair<int, std::vector<float>> rows[] = {
        {3, {10, 13.333333f, 20, 30}}, {1, {10, 20, 30}}, {0, {10, 20, 30}}, {10, {10, 11, 13, 16}}};
    for (const auto& [readings, wanted] : rows) {
        SCOPED_TRACE(readings);
        ReadingAverage average;
        average.Resize(readings);
        for (; average.ReadTick < static_cast<int>(wanted.size()); ++average.ReadTick) {
            const auto tick = static_cast<std::size_t>(average.ReadTick);
            const float value = 10.0f * static_cast<float>(tick + 1);
            average.ReadChannels({value, value, -value, value, 0}, 0, 3);
            EXPECT_FLOAT_EQ(average.AvgReading[0], wanted[tick]);
            EXPECT_FLOAT_EQ(average.AvgReading[2], -wanted[tick]);
            EXPECT_EQ(average.AvgReading[1], value) << "a sensor is never averaged";
        }
    }
}

TEST(Averaging, AChangeOfTheWindowAveragesZerosAwayAndIsCounted) {
    ReadingAverage average;
    average.ReadTick = 1;
    average.Resize(3);
    const std::tuple<float, bool, int> rows[] = {{20, true, 1}, {40, true, 2},  {60, true, 3},
                                                 {60, true, 3}, {60, false, 0}, {60, true, 1}};
    for (const auto& [mean, fresh, filled] : rows) {
        average.ReadChannels({60, 1, 1, 1, 0}, 0, 3, ReadingAverage::FirstTick::Takes, fresh);
        EXPECT_FLOAT_EQ(average.AvgReading[0], mean);
        EXPECT_EQ(average.Filled(), filled);
    }
    average.Restart();
    average.ReadChannels({60, 1, 1, 1, 0}, 0, 3);
    EXPECT_EQ(average.Filled(), 3) << "the first reading fills all";
}

TEST(Averaging, OnlyAReadingScreenHoldsItsFirstTick) {
    ReadingAverage average;
    EXPECT_FALSE(average.ReadChannels({50, 700, 0, 700, 0}, 0, 3, Waits)) << "one dead channel holds all";
    EXPECT_EQ(average.ZeroChannel(), 2);
    EXPECT_TRUE(average.ReadChannels({0, 700, 1, 0, 0}, 1, 2, Waits)) << "those outside the range do not count";
    EXPECT_TRUE(ReadingAverage().ReadChannels({0, 0, 0, 0, 0}, 0, 3)) << "other screens do not wait";
}

}  // namespace
}  // namespace kelvo
