#pragma once

#include <string>

namespace kelvo {

/// Local date and time to the second.
struct DateTime {
    int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

class Clock {
 public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
    /// Seconds of a clock that runs evenly, whatever is done to the time of day; only differences count.
    virtual double SteadySeconds() const = 0;
};

/// "24/11/2026 20:49" when `dateFormat` is 0, else "11/24/2026 20:49".
std::string DateTimeText(const DateTime& time, int dateFormat);
/// The date alone, "dd/mm/yyyy" or "mm/dd/yyyy".
std::string DateText(const DateTime& time, int dateFormat);
/// "20:49".
std::string TimeText(const DateTime& time);
/// "2026-11-24".
std::string DayText(const DateTime& time);

}  // namespace kelvo
