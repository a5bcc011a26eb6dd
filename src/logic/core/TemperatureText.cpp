#include "core/TemperatureText.h"

#include <cfloat>

#include "core/Tables.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double AbsoluteZero = -273.15;
constexpr double Hottest = (double{FLT_MAX} - 32) / 1.8;  ///< its °F is a 32-bit number too

}  // namespace

std::string FahrenheitText(float celsius) {
    return Format(CelsiusToFahrenheit(celsius), "#0.0");
}

std::string CelsiusText(float fahrenheit) {
    return Format(FahrenheitToCelsius(fahrenheit), "#0.0");
}

std::string FahrenheitFrom(const std::string& celsius) {
    if (Trim(celsius).empty()) return {};
    return FahrenheitText(ToSingle(Val(celsius)));
}

std::string CelsiusFrom(const std::string& fahrenheit) {
    if (Trim(fahrenheit).empty()) return {};
    return CelsiusText(ToSingle(Val(fahrenheit)));
}

std::string FahrenheitOrNone(const std::string& celsius) {
    try {
        return FahrenheitFrom(celsius);
    } catch (const RuntimeError&) {
        return {};
    }
}

bool TemperaturePair::Take(const std::string& typed, bool inFahrenheit) {
    try {
        const std::string other = inFahrenheit ? CelsiusFrom(typed) : FahrenheitFrom(typed);
        if (!CelsiusOf(inFahrenheit ? other : typed)) return false;
        celsius = inFahrenheit ? other : typed;
        fahrenheit = inFahrenheit ? typed : other;
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

std::optional<float> CelsiusOf(const std::string& text) {
    const double value = Val(text);
    if (value <= AbsoluteZero || value > Hottest) return std::nullopt;
    return static_cast<float>(value);
}

}  // namespace kelvo
