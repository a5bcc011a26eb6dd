#include "core/Clock.h"
#include "ph/ElectrodeQuality.h"

#include <gtest/gtest.h>

#include "app/AppState.h"
#include "ph/CalibrationDoubt.h"
#include "ph/PhCalibrationFile.h"
#include "support/SourceDir.h"
#include "text/Files.h"

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
        EXPECT_EQ(QualityDoubt(quality).empty(), !bad);
    }
    // What is told in place of, or behind, the numbers.
    const std::tuple<BufferTable, double, const char*> told[] = {
        {{{}, {0, 7, 10}, {0, 7, 10}, {0, 4, 187}}, 25, "two of its buffers have the same pH 7"},
        {{{}, {0, 7, 10}, {0, 4, 187}, {0, 7, 9}}, 25, "two of its buffers have the same pH 7"},
        {{{}, {0, 7, 9}, {0, 6.86f, 8}, {0, 4, 187}}, 25, "The potentials do not follow the pH"},
        {{{}, {0, 7, 0}, {0, 4, 177}}, -274, "slope -59.0 mV/pH, 0.0 %"}};
    for (const auto& [table, celsius, words] : told) {
        const auto quality = JudgeElectrode(table, static_cast<int>(table.size()) - 1, celsius);
        EXPECT_NE(ElectrodeQualityText(1, quality, celsius).find(words), std::string::npos) << words;
        EXPECT_FALSE(quality.sound) << words;
    }
}

TEST(CalibrationDoubt, TellsWhatAValueIsReadBy) {
    AppState state;
    ReadPh(state, ReadWholeFile(test::SourceDir() + "packaging/DEFAULT.CLI"));
    EXPECT_EQ(CalibrationDoubt(state, 2, {2026, 11, 24}), "delivered calibration of an ideal electrode");
    const BufferTable good = {{}, {0, 7, 0}, {0, 4, 177}}, weak = {{}, {0, 7, 3}, {0, 4, 153}}, one = {{}, {0, 7, 3}};
    const std::tuple<const char*, const char*, int, BufferTable, const char*> rows[] = {
        {"PH-1", "17/11/2026 09:00", 0, good, ""},
        {" PH-1", "16/11/2026 23:59", 0, good, "calibrated 8 days ago"},
        {"PH-1", "11/16/2026 09:00", 0, good, "calibrated 8 days ago"},  // the other order of day and month
        {"PH-1", "12/01/2026 09:00", 0, good, "calibrated 316 days ago"},
        {"PH-1", "25/11/2026 09:00", 0, good, "calibrated on a date that cannot be told"},
        {"PH-9", "24/11/2026 09:00", 0, good, "calibrated with electrode PH-9"},
        {"", "24/11/2026", 0, one, "calibrated with an electrode without a number; calibrated with one buffer"},
        {"PH-1", "1/11/2026", 0, weak, "judged bad: slope 84.5 %, offset 3.0 mV; calibrated 23 days ago"},
    };
    state.ElectrodeNum[1] = "PH-1";
    for (const auto& [electrode, date, format, table, doubt] : rows) {
        state.PhCaliElectrode[1] = electrode;
        state.PhCaliDate[1] = date;
        state.DateFormat = static_cast<std::int16_t>(format);
        state.Buffers1 = table;
        state.BufferCount[1] = static_cast<std::int16_t>(table.size() - 1);
        EXPECT_EQ(CalibrationDoubt(state, 1, {2026, 11, 24}), doubt);
    }
}

}  // namespace
}  // namespace kelvo
