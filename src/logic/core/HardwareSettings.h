#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kelvo {

/// What is connected and who measures, as KELVO.ini has it.
struct HardwareSettings {
    std::string Operator;
    std::array<std::string, 2> RefElectrode;  ///< type, serial number
    std::array<std::string, 3> ElectrodeNum;  ///< serial numbers: ISE, pH 1, pH 2
    std::string ISAB;
    std::int16_t DateFormat = 0;             ///< 0 day first, else month first
    std::array<std::int16_t, 5> Channel{};   ///< 0 pH 1, 1 ISE, 2 sensor 1, 3 pH 2, 4 sensor 2; 1 in use
    std::array<std::string, 3> Temperature;  ///< 1, 2: default °C of the two channels; 0 is never filled
    std::array<std::int16_t, 4> InputActive{};
    std::int16_t ActiveCount = 0;
    std::int16_t PortIndex = 0, HardwarePort = 1;
    std::int16_t NetworkPrinter = 0;
    std::int16_t InterfaceKind = 2, SensorCount = 2;
};

}  // namespace kelvo
