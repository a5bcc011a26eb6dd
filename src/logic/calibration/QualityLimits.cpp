#include "calibration/QualityLimits.h"

#include <cmath>

#include "core/Settings.h"
#include "text/Number.h"

namespace kelvo {

const char* const QualitySection = "Calibration Quality";

const std::vector<QualityLimitRow>& QualityLimitRows() {
    using Limits = QualityLimits;
    static const std::vector<QualityLimitRow> rows = {{"GoodSlopeFrom", &Limits::goodSlopeFrom, "%"},
                                                      {"GoodSlopeTo", &Limits::goodSlopeTo, "%"},
                                                      {"GoodResidual", &Limits::goodResidual, "mV"},
                                                      {"UsableSlopeFrom", &Limits::usableSlopeFrom, "%"},
                                                      {"UsableSlopeTo", &Limits::usableSlopeTo, "%"},
                                                      {"UsableResidual", &Limits::usableResidual, "mV"},
                                                      {"GoodInterval", &Limits::goodInterval, "%"},
                                                      {"UsableInterval", &Limits::usableInterval, "%"},
                                                      {"SlopeChange", &Limits::slopeChange, "%"},
                                                      {"LinearWithin", &Limits::linearWithin, "mV"},
                                                      {"TemperatureWithin", &Limits::temperatureWithin, "°C"}};
    return rows;
}

QualityLimits ReadQualityLimits(const std::string& iniPath) {
    const QualityLimits builtIn;
    QualityLimits limits;
    for (const QualityLimitRow& row : QualityLimitRows()) {
        const double value = Val(ReadSetting(QualitySection, row.key, iniPath));
        constexpr double Largest = 1e6;
        if (value > 0 && value < Largest) limits.*row.field = value;
    }
    const auto inOrder = [&](double QualityLimits::*low, double QualityLimits::*high) {
        if (limits.*low < limits.*high) return;
        limits.*low = builtIn.*low;
        limits.*high = builtIn.*high;
    };
    inOrder(&QualityLimits::goodSlopeFrom, &QualityLimits::goodSlopeTo);
    inOrder(&QualityLimits::usableSlopeFrom, &QualityLimits::usableSlopeTo);
    inOrder(&QualityLimits::goodResidual, &QualityLimits::usableResidual);
    inOrder(&QualityLimits::goodInterval, &QualityLimits::usableInterval);
    return limits;
}

}  // namespace kelvo
