#pragma once

#include <string>

namespace kelvo {

/// What is wrong with a temperature sensor, by the degrees that it tells: below 0 it is not connected. A line that
/// tells 0 (110.9 °C) is none either, and no sample in water is above 100 °C.
enum class SensorFault { None, NotWorking, NotPlausible };
SensorFault FaultOf(float celsius);

/// "temperature sensor 1 does not work", "temperature sensor 1 tells 110.9 °C: is it connected?"; empty without a
/// fault.
std::string SensorFaultText(int sensor, float celsius);

}  // namespace kelvo
