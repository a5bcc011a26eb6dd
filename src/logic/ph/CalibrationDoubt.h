#pragma once

#include <optional>
#include <string>

#include "core/StateOf.h"

namespace kelvo {

struct DateTime;

/// Days after which a pH calibration is told to be old.
constexpr int OldCalibrationDays = 7;

/// What a value read by the pH calibration in use has to be told with, parts joined by "; ", empty when nothing: that
/// it is the ideal one that the program comes with, of an electrode other than the one connected, of a single buffer,
/// judged bad, or old.
/// @param electrode 1 or 2
std::string CalibrationDoubt(StateOf<const PhCalibration, const HardwareSettings> state, int electrode,
                             const DateTime& now);

/// Whole days from the date of a text as `DateTimeText` writes it. Another program may have had the other order of day
/// and month set: it counts where the one set makes no date up to now. None when neither does.
std::optional<int> DaysSince(const std::string& date, const DateTime& now, int dateFormat);

}  // namespace kelvo
