#include "ph/ElectrodeQuality.h"

#include <gtest/gtest.h>

#include "ph/SteadyWatch.h"

namespace kelvo {
namespace {

TEST(ElectrodeQuality, TellsSlopeShareAndOffset) {
    const std::string clean = " Clean or replace the electrode; check the buffers.";
    const std::tuple<BufferTable, double, std::string> rows[] = {
        // Theoretical at 25 °C: 8.314462618 · 298.15 · 2.302585093 / 96485.33212 = 59.1594 mV; 59 of it is 99.73 %.
        {{{}, {0, 7, 0}, {0, 4, 177}}, 25, "-59.0 mV/pH, 99.7 % of the theoretical one at 25.0 °C, offset 0.0"},
        // At 50 °C 64.1199 mV.
        {{{}, {0, 7, 10}, {0, 4, 187}}, 50, "-59.0 mV/pH, 92.0 % of the theoretical one at 50.0 °C, offset 10.0"},
        // Least squares of (4, 180), (7, 0), (10, -150): -330 · 3 / 18; the mean 10 lies at pH 7.
        {{{}, {0, 4, 180}, {0, 7, 0}, {0, 10, -150}},
         25,
         "-55.0 mV/pH, 93.0 % of the theoretical one at 25.0 °C, offset 10.0"},
        // Weak, too steep, reversed.
        {{{}, {0, 7, 0}, {0, 4, 150}}, 25, "-50.0 mV/pH, 84.5 % of the theoretical one at 25.0 °C, offset 0.0!"},
        {{{}, {0, 7, 0}, {0, 4, 187.2f}}, 25, "-62.4 mV/pH, 105.5 % of the theoretical one at 25.0 °C, offset 0.0!"},
        {{{}, {0, 7, 0}, {0, 4, -177}}, 25, "59.0 mV/pH, -99.7 % of the theoretical one at 25.0 °C, offset 0.0!"},
        // Shifted: just within, and beyond.
        {{{}, {0, 7, -30}, {0, 4, 147}}, 25, "-59.0 mV/pH, 99.7 % of the theoretical one at 25.0 °C, offset -30.0"},
        {{{}, {0, 7, 30.5f}, {0, 4, 207.5f}},
         25,
         "-59.0 mV/pH, 99.7 % of the theoretical one at 25.0 °C, offset 30.5!"},
    };
    for (auto [table, celsius, text] : rows) {
        const bool bad = text.back() == '!';
        if (bad) text.pop_back();
        const auto quality = JudgeElectrode(table, static_cast<int>(table.size()) - 1, celsius);
        EXPECT_EQ(ElectrodeQualityText(2, quality, celsius),
                  "Electrode 2: slope " + text + " mV at pH 7." + (bad ? clean : ""));
    }
}

TEST(SteadyWatch, TenReadingsWithinTwoHundredths) {
    SteadyWatch watch;
    const auto take = [&](const char* shown, int times) {
        for (int i = 0; i < times; ++i)
            watch.Take(shown);
        return watch.Steady();
    };
    EXPECT_FALSE(take("6.98", 9));
    EXPECT_TRUE(take("7.02", 1));
    EXPECT_FALSE(take("7.03", 1));
    EXPECT_FALSE(take("7.00", 7)) << "the first of ten is a 6.98";
    EXPECT_TRUE(take("7.00", 1));
    EXPECT_FALSE(take("6.95", 1));
    watch.Clear();
    EXPECT_FALSE(take("7.00", 9));
}

}  // namespace
}  // namespace kelvo
