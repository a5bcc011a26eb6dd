#include "core/Clock.h"

#include <cstdio>

namespace kelvo {
namespace {

std::string Two(int n) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d", n);
    return buffer;
}

}  // namespace

std::string DateText(const DateTime& time, int dateFormat) {
    char year[16];
    std::snprintf(year, sizeof year, "%04d", time.year);
    const std::string day = Two(time.day);
    const std::string month = Two(time.month);
    return (dateFormat == 0 ? day + "/" + month : month + "/" + day) + "/" + year;
}

std::string TimeText(const DateTime& time) {
    return Two(time.hour) + ":" + Two(time.minute);
}

std::string DayText(const DateTime& time) {
    char year[16];
    std::snprintf(year, sizeof year, "%04d-", time.year);
    return year + Two(time.month) + "-" + Two(time.day);
}

std::string DateTimeText(const DateTime& time, int dateFormat) {
    return DateText(time, dateFormat) + " " + TimeText(time);
}

}  // namespace kelvo
