#include "link/Stability.h"
#include "link/SteadyWatch.h"

#include <gtest/gtest.h>

namespace kelvo {
namespace {

/// A screen's ticks, a letter each. New frames: `f` in time, `F` in time and 3 mV higher, `l` late, `j` in time after a
/// late one that no tick has seen, `a` in time while zeros are still averaged away. No new frame: `s` the same, `.` the
/// next one is late, `-` the value is stale.
class Screen {
 public:
    explicit Screen(double tickSeconds) : tickSeconds_(tickSeconds) { watch.Start(tick_.frame, tick_.seconds); }

    StabilityWatch::Verdict Tick(const StabilitySettings& settings, char letter) {
        tick_.seconds += tickSeconds_;
        tick_.live = letter != '-' && letter != 'a';
        const bool frame = std::string_view("fFlja").find(letter) != std::string_view::npos;
        if (frame) tick_.frame.number += letter == 'j' ? 2 : 1;
        if (letter == 'F') tick_.displayed += 3;
        rhythm_ = letter == 'l' ? 0 : letter == 'j' ? 1 : rhythm_ + (frame ? 1 : 0);
        tick_.frame.inTime = letter == '.' || letter == '-' ? 0 : rhythm_;
        return watch.Tick(settings, tick_);
    }

    StabilityWatch watch;

 private:
    double tickSeconds_;
    StabilityTick tick_{.displayed = 109, .frame = {7, 7, 0}, .seconds = 1000.7};
    std::uint64_t rhythm_ = 7;
};

TEST(Stability, TellsOfFramesThatAgreeAndTakesItBack) {
    const auto agree = [](std::int16_t readings, std::int16_t seconds = 0) {
        return StabilitySettings{1, readings, 0.5f, seconds, 30};
    };
    const StabilitySettings preset{2, 10, 0, 5, 3};
    const struct {
        const char* name;
        StabilitySettings settings;
        double tickSeconds;
        const char *ticks, *stable;  ///< a `*` under each tick that is told stable
    } rows[] = {
        {"as many as the setting says", agree(4), 1, "ffffff", "   ***"},
        {"a frame that two ticks show counts once", agree(3), 0.5, "fsfsfs", "    **"},
        {"so that a moving reading is none", agree(2), 0.5, "FsFsFsFs", "        "},
        {"what stood before the wait does not count", agree(1), 1, "ssf", "  *"},
        {"no sooner than the waiting time, in whole seconds", agree(2, 3), 0.5, "fsfsfsf", "     **"},
        {"one that leaves the threshold takes it back", agree(3), 1, "fffFfff", "  *  **"},
        {"an interface of 1.1 s", agree(1), 1, "l.l.l.", "      "},
        {"one that dies", agree(5), 1, "ffff.----", "         "},
        {"one that dies after it was told", agree(2), 1, "fff.--", " **   "},
        {"silence held", agree(1), 1, "------", "      "},
        {"after a silence all anew", agree(3), 1, "ff---lfff", "        *"},
        {"a late frame between", agree(3), 1, "ffflfff", "  *   *"},
        {"and one that came between two ticks", agree(3), 1, "fffjff", "  *  *"},
        {"while zeros are averaged away", agree(2), 1, "aaaff", "    *"},
        {"the pre-set time alone", preset, 1, "FFFFF", "  ***"},
        {"its whole seconds", preset, 0.5, "FsFsFsF", "     **"},
        {"but no stale value", preset, 1, "ff--f-s", "    * *"},
        {"a late one is fresh enough", preset, 1, "l.l.", "  **"},
    };
    for (const auto& row : rows) {
        Screen screen(row.tickSeconds);
        std::string stable;
        for (const char* tick = row.ticks; *tick != 0; ++tick)
            stable += screen.Tick(row.settings, *tick) == StabilityWatch::Verdict::Stable ? '*' : ' ';
        EXPECT_EQ(stable, row.stable) << row.name;
    }
}

TEST(Stability, TheSpreadIsJudgedInTheWidthOfTheThreshold) {
    // Largest less smallest of 81, 81.02, 81 in doubles is a little above 0.02.
    for (const auto& [threshold, stable] : {std::pair{0.02f, true}, {0.019f, false}, {0.0f, false}}) {
        StabilityWatch watch;
        watch.Start({}, 0);
        std::uint64_t frame = 0;
        auto verdict = StabilityWatch::Verdict::Waiting;
        for (const double value : {81.0, 81.02, 81.0}) {
            ++frame;
            verdict = watch.Tick({1, 3, threshold, 0, 30}, {value, {frame, frame, 0}, true, 9});
        }
        EXPECT_EQ(verdict == StabilityWatch::Verdict::Stable, stable) << threshold;
    }
}

TEST(SteadyWatch, TellsADriftByTheSlopeOfTheLastTwentyReadings) {
    // mV a minute, ± mV from reading to reading, seconds before the last one, readings.
    const std::tuple<double, double, double, int, const char*> rows[] = {
        {0, 0, 1, 19, "not yet steady"},
        {0, 0, 1, 20, "steady"},
        {0.55, 0, 1, 200, "steady"},
        {-0.68, 0, 1, 20, "not yet steady: drifts -0.7 mV/min"},
        {15.4, 0, 1, 10, "not yet steady: drifts 15.4 mV/min"},  // 0.26 pH a minute
        {15.4, 0, 1, 9, "not yet steady"},
        // ±0.2 mV in turn: s = 0.21 mV, of the slope 0.21 · 60 / √665 = 0.49 mV a minute; ±0.4 mV 0.98.
        {0, 0.2, 1, 20, "steady"},
        {0, 0.4, 1, 20, "not yet steady: scatters by 0.4 mV"},
        // A frame left out, and a gap.
        {0, 0, 3, 20, "steady"},
        {0, 0, 3.1, 20, "not yet steady"}};
    for (const auto& [perMinute, swing, gap, readings, told] : rows) {
        SteadyWatch watch;
        for (int i = 0; i < readings; ++i) {
            const double seconds = 1000 + i + (i == readings - 1 ? gap - 1 : 0);
            watch.Take(seconds, 118 + perMinute * seconds / 60 + (i % 2 == 0 ? swing : -swing));
        }
        EXPECT_EQ(SteadyText(watch.Judge()), told) << perMinute << " " << swing << " " << gap << " " << readings;
    }
}

TEST(Stability, CountsDownToZero) {
    const StabilitySettings settings{2, 10, 0, 5, 2};
    Screen screen(0.75);
    const std::pair<char, const char*> rows[] = {{'f', "2"}, {'f', "1"}, {'f', "0"}, {'-', "0"}};
    for (const auto& [tick, left] : rows) {
        screen.Tick(settings, tick);
        EXPECT_EQ(screen.watch.CountDown(settings), std::string("Pre-set time countdown: ") + left);
    }
    screen.watch.Stop();
    EXPECT_EQ(screen.watch.CountDown(settings), "");
    EXPECT_EQ(screen.Tick(settings, 'f'), StabilityWatch::Verdict::NotWaiting);
}

}  // namespace
}  // namespace kelvo
