#include "link/Averaging.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

constexpr auto Waits = ReadingAverage::FirstTick::WaitsForData;

TEST(Averaging, FirstReadingFillsTheWindow) {
    const struct {
        const char* name;
        int readings;
        std::vector<float> wanted;
    } rows[] = {
        {"three", 3, {10, 13.333333f, 20, 30}},
        {"one shows each frame", 1, {10, 20, 30, 40}},
        {"none counts as one", 0, {10, 20, 30, 40}},
        {"longer than the run", 10, {10, 11, 13, 16}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ReadingAverage average;
        average.Resize(row.readings);
        for (std::size_t tick = 0; tick < row.wanted.size(); ++tick) {
            const float value = 10.0f * static_cast<float>(tick + 1);
            average.ReadChannels({value, value, -value, value, 0}, 0, 3);
            EXPECT_FLOAT_EQ(average.AvgReading[0], row.wanted[tick]);
            EXPECT_EQ(average.AvgReading[1], value) << "a sensor is never averaged";
            EXPECT_FLOAT_EQ(average.AvgReading[2], -row.wanted[tick]);
            EXPECT_EQ(average.AvgReading[3], value);
            ++average.ReadTick;
        }
    }
}

TEST(Averaging, AChangeOfTheWindowAveragesZerosAway) {
    ReadingAverage average;
    average.Resize(1);
    average.ReadChannels({60, 1, 1, 1, 0}, 0, 3);
    ++average.ReadTick;
    average.Resize(3);
    for (const float wanted : {20.0f, 40.0f, 60.0f}) {
        average.ReadChannels({60, 1, 1, 1, 0}, 0, 3);
        EXPECT_FLOAT_EQ(average.AvgReading[0], wanted);
    }
}

TEST(Averaging, AReadingScreenCanHoldItsFirstTick) {
    ReadingAverage average;
    EXPECT_FALSE(average.ReadChannels({0, 0, 0, 0, 0}, 0, 3, Waits));
    EXPECT_FALSE(average.ReadChannels({50, 700, 0, 700, 0}, 0, 3, Waits)) << "one dead channel holds all";
    EXPECT_TRUE(average.ReadChannels({50, 700, 1, 700, 0}, 0, 3, Waits));
    ++average.ReadTick;
    EXPECT_TRUE(average.ReadChannels({0, 0, 0, 0, 0}, 0, 3, Waits)) << "later zeros are readings";
    EXPECT_TRUE(ReadingAverage().ReadChannels({0, 0, 0, 0, 0}, 0, 3)) << "other screens do not wait";
}

TEST(Averaging, ChannelsOutsideTheRangeStand) {
    ReadingAverage average;
    average.AvgReading = {9, 9, 9, 9, 9};
    average.ReadChannels({1, 2, 3, 4, 5}, 1, 2);
    EXPECT_EQ(average.AvgReading, (std::array<float, 5>{9, 2, 3, 9, 9}));
}

}  // namespace
}  // namespace kelvo
