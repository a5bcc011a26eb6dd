#include "ph/CalibrationDoubt.h"

#include <chrono>
#include <cstdio>

#include "core/Clock.h"
#include "core/HardwareSettings.h"
#include "core/StateOf.h"
#include "ph/ElectrodeQuality.h"
#include "ph/PhCalibration.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr std::size_t Ph = 1, Mv = 2;

/// The table that the program comes with; no reading has two decimals, so no electrode has given it.
bool IsDelivered(const BufferTable& table, int rows) {
    constexpr float IdealMv = 177.48f;
    return rows == 2 && table[1][Ph] == 4 && table[1][Mv] == IdealMv && table[2][Ph] == 7 && table[2][Mv] == 0;
}

std::optional<std::chrono::sys_days> DateOf(const std::string& text, bool dayFirst) {
    int first = 0, second = 0, year = 0;
    if (std::sscanf(text.c_str(), "%2d/%2d/%4d", &first, &second, &year) != 3) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{year},
                                           std::chrono::month{static_cast<unsigned>(dayFirst ? second : first)},
                                           std::chrono::day{static_cast<unsigned>(dayFirst ? first : second)}};
    if (!date.ok()) return std::nullopt;
    return std::chrono::sys_days(date);
}

std::string AgeOf(StateOf<const PhCalibration, const HardwareSettings> state, std::size_t e, const DateTime& now) {
    const PhCalibration& phCalibration = state;
    const HardwareSettings& hardware = state;
    const auto days = DaysSince(phCalibration.PhCaliDate[e], now, hardware.DateFormat);
    if (!days) return "calibrated on a date that cannot be told";
    return *days > OldCalibrationDays ? "calibrated " + TrimStr(*days) + " days ago" : std::string();
}

std::string ElectrodeOf(StateOf<const PhCalibration, const HardwareSettings> state, std::size_t e) {
    const PhCalibration& phCalibration = state;
    const HardwareSettings& hardware = state;
    const std::string calibrated = Trim(phCalibration.PhCaliElectrode[e]);
    if (calibrated == Trim(hardware.ElectrodeNum[e])) return {};
    return "calibrated with " +
           (calibrated.empty() ? std::string("an electrode without a number") : "electrode " + calibrated);
}

}  // namespace

std::optional<int> DaysSince(const std::string& date, const DateTime& now, int dateFormat) {
    const std::chrono::sys_days today = std::chrono::year{now.year} /
                                        std::chrono::month{static_cast<unsigned>(now.month)} /
                                        std::chrono::day{static_cast<unsigned>(now.day)};
    for (const bool dayFirst : {dateFormat == 0, dateFormat != 0})
        if (const auto then = DateOf(date, dayFirst); then && *then <= today)
            return static_cast<int>((today - *then).count());
    return std::nullopt;
}

std::string CalibrationDoubt(StateOf<const PhCalibration, const HardwareSettings> state, int electrode,
                             const DateTime& now) {
    const PhCalibration& phCalibration = state;
    const auto e = static_cast<std::size_t>(electrode);
    const BufferTable& table = electrode == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2;
    const int rows = phCalibration.BufferCount[e];
    if (rows < 1 || static_cast<std::size_t>(rows) >= table.size()) return {};
    if (IsDelivered(table, rows)) return "delivered calibration of an ideal electrode";
    std::string doubt;
    const auto add = [&doubt](const std::string& part) {
        if (!part.empty()) doubt += (doubt.empty() ? "" : "; ") + part;
    };
    add(ElectrodeOf(state, e));
    if (rows == 1)
        add("calibrated with one buffer");
    else
        add(QualityDoubt(JudgeElectrode(table, rows, double{phCalibration.PhCaliTemp[e]})));
    add(AgeOf(state, e, now));
    return doubt;
}

}  // namespace kelvo
