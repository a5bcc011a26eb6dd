#include "link/Stability.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

using Verdict = StabilityWatch::Verdict;
constexpr int Midnight = 86400;

TEST(Stability, WaitsForAgreementAndForItsTimeWhateverTheClockDoes) {
    const StabilitySettings preset{2, 10, 0, 5, 10}, agreement{1, 5, 0.02f, 5, 30};
    const struct {
        const char* name;
        StabilitySettings settings;
        int wanted;                           ///< the tick that is first stable, 0 when none is
        int start = 50000, at = 0, jump = 0;  ///< from the tick `at` on the clock shows `jump` seconds too much
        bool settles = false;                 ///< falls until tick 20 and swings by 0.02 from then on
    } rows[] = {
        {"ten agreeing values", {1, 10, 0.02f, 5, 30}, 10},
        {"no sooner than the waiting time", {1, 3, 0.02f, 25, 30}, 25},
        {"threshold 0 takes an unmoving reading", {1, 4, 0, 2, 30}, 4},
        {"the last values count, not the first", agreement, 23, 50000, 0, 0, true},
        {"a spread just above", {1, 5, 0.01f, 5, 30}, 0, 50000, 0, 0, true},
        {"preset time alone", preset, 10, 50000, 0, 0, true},
        {"midnight", preset, 10, Midnight - 5},
        {"an hour forward", preset, 11, 100, 2, 3600},
        {"values from before a jump are no evidence", {1, 5, 0.02f, 1, 30}, 6, 100, 2, 3600},
        {"an hour back", preset, 11, 7200, 2, -3600},
        {"asleep over midnight", preset, 11, Midnight - 10, 2, 609},
        {"a late tick counts in full", preset, 7, 100, 2, 3},
    };
    for (const auto& row : rows) {
        StabilityWatch watch;
        watch.Start(row.start);
        int stableAt = 0;
        for (int tick = 1; tick <= 120 && stableAt == 0; ++tick) {
            const double value = !row.settles ? 58.21 : tick < 20 ? 100.0 - tick : 81.0 + (tick % 2) * 0.02;
            const int clock = (row.start + tick + (tick >= row.at ? row.jump : 0)) % Midnight;
            if (watch.Tick(row.settings, value, true, clock) == Verdict::Stable) stableAt = tick;
        }
        EXPECT_EQ(stableAt, row.wanted) << row.name;
    }
}

TEST(Stability, ASilentInterfaceIsNeverStable) {
    const StabilitySettings settings{1, 3, 0.9f, 1, 30};
    StabilityWatch watch;
    watch.Start(0);
    // Values from before and during the silence are no evidence: three new ones are needed.
    for (int tick = 1; tick <= 62; ++tick)
        EXPECT_EQ(watch.Tick(settings, 42, tick < 3 || tick > 60, tick), Verdict::Waiting);
    EXPECT_EQ(watch.Tick(settings, 42, true, 63), Verdict::Stable);
}

TEST(Stability, CountsDownToZero) {
    const StabilitySettings settings{2, 10, 0, 5, 1};
    StabilityWatch watch;
    EXPECT_EQ(watch.CountDown(settings), "");
    watch.Start(Midnight - 1);
    for (const char* shown : {"1", "0", "0"}) {
        EXPECT_EQ(watch.CountDown(settings), std::string("Pre-set time countdown: ") + shown);
        watch.Tick(settings, 1, true, shown[0] == '1' ? 0 : 1);
    }
    watch.Stop();
    EXPECT_EQ(watch.CountDown(settings), "");
}

TEST(Stability, AnHourOverMidnightWithEveryKindOfJump) {
    constexpr int Hour = 3600;
    const StabilitySettings settings{2, 10, 0, 5, Hour};
    const std::pair<int, int> jumps[] = {{600, Hour}, {1200, -Hour}, {2400, 2 * Hour}, {3000, -90}};
    int clock = Midnight - 1800;
    StabilityWatch watch;
    watch.Start(clock);
    int ticks = 0;
    for (auto verdict = Verdict::Waiting; verdict != Verdict::Stable && ticks < 2 * Hour; ++ticks) {
        clock += 1;
        for (const auto& [at, by] : jumps)
            if (ticks == at) clock += by;
        clock = (clock + Midnight) % Midnight;
        verdict = watch.Tick(settings, 1, true, clock);
    }
    EXPECT_EQ(ticks, Hour + 4) << "each jump costs its own tick and nothing else";
}

}  // namespace
}  // namespace kelvo
