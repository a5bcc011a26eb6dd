#include "link/Stability.h"

#include <gtest/gtest.h>

#include <functional>

namespace kelvo {
namespace {

using Verdict = StabilityWatch::Verdict;
constexpr int Midnight = 86400;

/// Ticks once a second from `start`; gives the tick on which the reading first counts as stable, -1 when never.
int StableAt(StabilityWatch& watch, const StabilitySettings& settings, int start,
             const std::function<double(int)>& value, int ticks = 120) {
    for (int tick = 1; tick <= ticks; ++tick)
        if (watch.Tick(settings, value(tick), true, (start + tick) % Midnight) == Verdict::Stable) return tick;
    return -1;
}

TEST(Stability, WaitsForAgreementAndForItsTime) {
    const auto steady = [](int) { return 58.21; };
    const auto settling = [](int tick) { return tick < 20 ? 100.0 - tick : 81.0 + (tick % 2) * 0.02; };
    const struct {
        const char* name;
        StabilitySettings settings;
        std::function<double(int)> value;
        int wanted;
    } rows[] = {
        {"ten agreeing values", {1, 10, 0.02f, 5, 30}, steady, 10},
        {"no sooner than the waiting time", {1, 3, 0.02f, 25, 30}, steady, 25},
        {"threshold 0 takes an unmoving reading", {1, 4, 0, 2, 30}, steady, 4},
        {"threshold 0 refuses a moving one", {1, 4, 0, 2, 30}, settling, -1},
        {"the last values count, not the first", {1, 5, 0.02f, 5, 30}, settling, 23},
        {"a spread just above", {1, 5, 0.01f, 5, 30}, settling, -1},
        {"preset time alone", {2, 10, 0, 5, 12}, settling, 12},
        {"one value", {1, 1, 0, 0, 30}, settling, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        StabilityWatch watch;
        watch.Start(50000);
        EXPECT_EQ(StableAt(watch, row.settings, 50000, row.value), row.wanted);
    }
}

TEST(Stability, SurvivesMidnightTheSetClockAndSleep) {
    const StabilitySettings preset{2, 10, 0, 5, 10}, agreement{1, 5, 0.02f, 5, 30};
    const struct {
        const char* name;
        std::vector<int> clock;  // seconds since midnight of each tick; the wait starts at the first
        int wantedPreset, wantedAgreement;
    } rows[] = {
        {"plain", {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111}, 10, 5},
        {"midnight", {86395, 86396, 86397, 86398, 86399, 0, 1, 2, 3, 4, 5, 6}, 10, 5},
        {"an hour forward", {100, 101, 3702, 3703, 3704, 3705, 3706, 3707, 3708, 3709, 3710, 3711}, 11, 6},
        {"an hour back", {7200, 7201, 3602, 3603, 3604, 3605, 3606, 3607, 3608, 3609, 3610, 3611}, 11, 6},
        {"asleep over midnight", {86390, 86391, 600, 601, 602, 603, 604, 605, 606, 607, 608, 609}, 11, 6},
        {"a late tick counts in full", {100, 101, 105, 106, 107, 108, 109, 110, 111, 112, 113, 114}, 7, 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const bool usesPreset : {true, false}) {
            StabilityWatch watch;
            watch.Start(row.clock.front());
            int stableAt = -1;
            for (std::size_t tick = 1; tick < row.clock.size() && stableAt < 0; ++tick)
                if (watch.Tick(usesPreset ? preset : agreement, 1.0, true, row.clock[tick]) == Verdict::Stable)
                    stableAt = static_cast<int>(tick);
            EXPECT_EQ(stableAt, usesPreset ? row.wantedPreset : row.wantedAgreement);
        }
    }
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

TEST(Stability, ASilentInterfaceIsNeverStable) {
    const StabilitySettings settings{1, 3, 0.9f, 1, 30};
    StabilityWatch watch;
    watch.Start(0);
    for (int tick = 1; tick <= 60; ++tick)
        EXPECT_EQ(watch.Tick(settings, 42, false, tick), Verdict::Waiting);
    EXPECT_EQ(watch.Tick(settings, 42, true, 61), Verdict::Waiting) << "old values are no evidence";
    EXPECT_EQ(watch.Tick(settings, 42, true, 62), Verdict::Waiting);
    EXPECT_EQ(watch.Tick(settings, 42, true, 63), Verdict::Stable);
}

TEST(Stability, CountsDownToZero) {
    const StabilitySettings settings{2, 10, 0, 5, 3};
    StabilityWatch watch;
    EXPECT_EQ(watch.CountDown(settings), "");
    watch.Start(Midnight - 1);
    std::vector<std::string> shown = {watch.CountDown(settings)};
    for (const int second : {0, 1, 2, 3}) {
        watch.Tick(settings, 1, true, second);
        shown.push_back(watch.CountDown(settings));
    }
    const std::string head = "Pre-set time countdown: ";
    EXPECT_EQ(shown, (std::vector<std::string>{head + "3", head + "2", head + "1", head + "0", head + "0"}));
    watch.Stop();
    EXPECT_EQ(watch.CountDown(settings), "");
    EXPECT_EQ(watch.Tick(settings, 1, true, 4), Verdict::NotWaiting);
}

}  // namespace
}  // namespace kelvo
