#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// What a calibration is judged by. Every limit is a row of one table, and a key of the settings section
/// `QualitySection` can replace it.
struct QualityLimits {
    double goodSlopeFrom = 95, goodSlopeTo = 102;      ///< % of the theoretical slope
    double usableSlopeFrom = 85, usableSlopeTo = 105;  ///< %
    double goodResidual = 1;    ///< mV, a standard that lies off the line by less is not looked into
    double usableResidual = 5;  ///< mV, a standard that lies off the line of the others by as much spoils it
    double goodInterval = 10;   ///< %, the 95 % interval of a sample reaches up no farther
    double usableInterval = 50;
    double slopeChange = 2;        ///< %, a point that changes the slope by more is marked
    double linearWithin = 2;       ///< mV, a standard of the linear range lies as near to its line
    double temperatureWithin = 2;  ///< °C, a sample farther from the calibration is told

    bool operator==(const QualityLimits&) const = default;
};

extern const char* const QualitySection;

/// One limit as the settings and the manual name it.
struct QualityLimitRow {
    const char* key;
    double QualityLimits::*field;
    const char* unit;
};
const std::vector<QualityLimitRow>& QualityLimitRows();

/// The limits with what the settings file replaces of them. A text that is no number above 0 leaves its limit as it
/// was built in, and so do ranges whose ends are crossed.
QualityLimits ReadQualityLimits(const std::string& iniPath);

}  // namespace kelvo
