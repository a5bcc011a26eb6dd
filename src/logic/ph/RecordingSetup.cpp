#include "ph/RecordingSetup.h"

namespace kelvo {

const std::array<IntervalEntry, 9> IntervalEntries = {{
    {"          2  Seconds", {"      40 Seconds", "     100 Seconds", "       3 Minutes", "       6 Minutes"}},
    {"          5  Seconds", {"     100 Seconds", "       4 Minutes", "       8 Minutes", "      15 Minutes"}},
    {"          10  Seconds", {"       3 Minutes", "       8 Minutes", "      15 Minutes", "      30 Minutes"}},
    {"          30  Seconds", {"      10 Minutes", "      25 Minutes", "      50 Minutes", "     100 Minutes"}},
    {"          1  Minute", {"      20 Minutes", "      50 Minutes", "     100 Minutes", "       3 Hours"}},
    {"          2  Minutes", {"      40 Minutes", "     100 Minutes", "       3 Hours", "       6 Hours"}},
    {"          5  Minutes", {"     100 Minutes", "       4 Hours", "       8 Hours", "      15 Hours"}},
    {"          10  Minutes", {"       3 Hours", "       8 Hours", "      15 Hours", "      30 Hours"}},
    {"          30  Minutes", {"      10 Hours", "       1 Day", "       2 Days", "       4 Days"}},
}};

std::span<const char* const> RangeEntries(bool ph) {
    static constexpr std::array<const char*, 5> Ph = {"0 - 7", "3 - 10 ", "4 - 7.5", "7 - 14", "0 - 14"};
    static constexpr std::array<const char*, 4> Ppm = {"0 - 10", "0 - 100 ", "0 - 1000", "0 - 10000"};
    if (ph) return Ph;
    return Ppm;
}

int OfferedRange(bool ph) {
    return ph ? 4 : 3;
}

}  // namespace kelvo
