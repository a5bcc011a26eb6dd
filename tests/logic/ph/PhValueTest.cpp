#include "ph/PhValue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kelvo {
namespace {

TEST(PhValue, ReadsAPotentialOffTheBuffers) {
    const BufferTable three = {{}, {0, 4, 175.8f}, {0, 7, 0}, {0, 10, -170}};
    const std::tuple<const char*, BufferTable, int, float, std::optional<float>> rows[] = {
        {"first segment", three, 3, 100, 5.293515f},  // 4 + 75.8 / 58.6
        {"second segment", three, 3, -85, 8.5f},      // 7 + 85 / 56.6667
        {"above the first, extended", three, 3, 234.4f, 3.0f},
        {"below the last, extended", three, 3, -226.66667f, 11.0f},
        {"at a buffer", three, 3, 0, 7.0f},
        {"two rows of three count", three, 2, -85, 8.450512f},  // 7 + 85 / 58.6
        {"the middle one first", {{}, {0, 7, 0}, {0, 10, -170}, {0, 4, 175.8f}}, 3, 175.8f, 4.0f},
        {"one buffer, above it", {{}, {0, 7, 350}}, 1, 400, 8.0f},
        {"one buffer, below it", {{}, {0, 7, 350}}, 1, 50, 1.0f},
        {"no buffer", {{}}, 0, 50, std::nullopt},
        {"more rows told than held", {{}, {0, 7, 350}}, 4, 50, 1.0f},
        {"equal pH", {{}, {0, 7, 10}, {0, 7, 0}}, 2, 5, std::nullopt},
        {"equal mV", {{}, {0, 4, 10}, {0, 7, 10}}, 2, 5, std::nullopt},
    };
    for (const auto& [name, table, count, mv, ph] : rows) {
        // No value compares as −99; the last places are those of 32-bit floats.
        EXPECT_NEAR(PhFromMv(table, count, mv).value_or(-99), ph.value_or(-99), 1e-5f) << name;
        BufferTable turned = table;
        std::reverse(turned.begin() + 1, turned.begin() + 1 + std::min<int>(count, static_cast<int>(table.size()) - 1));
        EXPECT_NEAR(PhFromMv(turned, count, mv).value_or(-99), ph.value_or(-99), 1e-5f) << name << ", turned";
    }
}

TEST(PhValue, CorrectsToTheSampleTemperature) {
    EXPECT_EQ(PhTempCorrect(4, 25, 25), 4);
    EXPECT_EQ(PhTempCorrect(7, 25, 80), 7);
    EXPECT_NEAR(PhTempCorrect(4, 25, 35), 4.09736, 1e-5);  // 7 - 3 · 298.15 / 308.15
    EXPECT_NEAR(PhTempCorrect(10, 25, 35), 9.90264, 1e-5);
    for (const auto& [calibration, sample] : {std::pair{25.0f, -274.0f}, {-300.0f, 25.0f}, {25.0f, HUGE_VALF}})
        EXPECT_TRUE(std::isnan(PhTempCorrect(4, calibration, sample)));
}

}  // namespace
}  // namespace kelvo
