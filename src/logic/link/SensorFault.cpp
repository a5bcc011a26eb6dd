#include "link/SensorFault.h"

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float HottestSample = 100;

}  // namespace

SensorFault FaultOf(float celsius) {
    if (celsius < 0) return SensorFault::NotWorking;
    return celsius > HottestSample ? SensorFault::NotPlausible : SensorFault::None;
}

std::string SensorFaultText(int sensor, float celsius) {
    const std::string name = "temperature sensor " + TrimStr(sensor);
    switch (FaultOf(celsius)) {
        case SensorFault::NotWorking: return name + " does not work";
        case SensorFault::NotPlausible: return name + " tells " + Format(celsius, "#0.0") + " °C: is it connected?";
        case SensorFault::None: break;
    }
    return {};
}

}  // namespace kelvo
