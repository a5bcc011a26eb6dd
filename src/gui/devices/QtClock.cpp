#include "devices/QtClock.h"

#include <time.h>

#include <QDateTime>

#include "core/Clock.h"

namespace kelvo {

DateTime QtClock::Now() const {
    const QDateTime now = QDateTime::currentDateTime();
    const QDate date = now.date();
    const QTime time = now.time();
    return {date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second()};
}

double QtClock::SteadySeconds() const {
    // Goes on while the machine sleeps, so that what fell due meanwhile is known.
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

}  // namespace kelvo
