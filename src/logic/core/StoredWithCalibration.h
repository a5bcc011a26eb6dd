#pragma once

#include <array>
#include <string>

namespace kelvo {

/// The items of `HardwareSettings` as stored with the calibration in use.
struct StoredWithCalibration {
    std::string FileOperator;
    std::array<std::string, 2> FileRefElectrode;
    std::array<std::string, 3> FileElectrodeNum;
    std::string FileTemp, FileDate;
};

}  // namespace kelvo
