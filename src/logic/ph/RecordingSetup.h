#pragma once

#include <array>
#include <span>

namespace kelvo {

// The lists of the setup screen of continuous recording. What was chosen stays in `RecordingChoices` of the state, as
// the rows of these lists, and the recording reads it there when it opens.

/// Entries of `cmbX` for 20, 50, 100 and 200 points; texts, not sums.
using RecordingPeriods = std::array<const char*, 4>;

/// One entry of `CmbTime`, blanks included, and the periods that go with it.
struct IntervalEntry {
    const char* text;
    RecordingPeriods periods;
};
extern const std::array<IntervalEntry, 9> IntervalEntries;

/// Entries of `cmbY`: five ranges of pH or four of ppm.
std::span<const char* const> RangeEntries(bool ph);
/// Range that is offered: 4 of pH (0 to 14), 3 of ppm (0 to 10000).
int OfferedRange(bool ph);

}  // namespace kelvo
