#include "addition/KnownSlopeForm.h"

#include <array>
#include <cmath>

#include "core/Dialogs.h"
#include "core/TemperatureText.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const Title = "KNOWN ELECTRODE SLOPE";
const char* const OutOfRange = "Data out of range, please re-enter";
constexpr double Largest = 1e30;  // beyond it no 32-bit degrees of the other scale exist

/// What a temperature box accepts, both ends included.
struct Range {
    double low, high;
};
constexpr std::array<Range, 3> Ranges = {{{0, 0}, {0, 99.9}, {32, 212}}};

}  // namespace

void KnownSlopeForm::Begin() {
    Set(Slope, {});
    const double celsius = Val(state_.CaliTemp);
    const bool known = !Trim(state_.CaliTemp).empty() && std::abs(celsius) < Largest;
    Set(Celsius, known ? Format(celsius, "#0.0") : std::string());
    Set(Fahrenheit, known ? FahrenheitText(static_cast<float>(celsius)) : std::string());
    offered_ = {Text(Celsius), Text(Fahrenheit)};
    SetNextField(Slope);
    FocusOn(Slope);
}

bool KnownSlopeForm::Refuse(int i) {
    prompts_.Message(OutOfRange, Title);
    if (std::abs(Val(Text(i))) >= Largest) {
        Set(Celsius, offered_.first);
        Set(Fahrenheit, offered_.second);
    }
    FocusOn(i);
    return false;
}

bool KnownSlopeForm::KeyAllowed(int, char32_t key) const {
    return (key >= U'0' && key <= U'9') || key == U'-' || key == U'.';
}

void KnownSlopeForm::KeyRefused(int) {
    prompts_.Message("Invalid data type, please re-enter the data!", Title);
}

void KnownSlopeForm::Enter(int i) {
    if (i == Slope || (i == Celsius && Text(Celsius).empty())) {
        SetNextField(i + 1);
        FocusOn(i + 1);
        return;
    }
    const double value = Val(Text(i));
    const Range range = Ranges[static_cast<std::size_t>(i)];
    if (value < range.low || value > range.high) {
        Refuse(i);
        return;
    }
    const auto typed = static_cast<float>(value);
    if (i == Celsius)
        Set(Fahrenheit, Str(CelsiusToFahrenheit(typed)));
    else
        Set(Celsius, Str(FahrenheitToCelsius(typed)));
    offered_ = {Text(Celsius), Text(Fahrenheit)};
    SetNextField(NoFocus);
    FocusOn(OkButton);
}

bool KnownSlopeForm::Ok() {
    if (Text(Slope).empty() || Text(Celsius).empty() || Text(Fahrenheit).empty()) {
        prompts_.Message("Incomplete data input, please check.");
        for (int i = Slope; i <= Fahrenheit; ++i) {
            if (!Text(i).empty()) continue;
            SetNextField(i);
            FocusOn(i);
            break;
        }
        return false;
    }
    for (const int i : {Celsius, Fahrenheit})
        if (std::abs(Val(Text(i))) >= Largest) return Refuse(i);
    state_.KnownSlope = Text(Slope);
    state_.KnownSlopeTemp = Text(Celsius);
    FocusOn(Slope);
    return true;
}

std::string KnownSlopeForm::StatusMessage() const {
    if (Text(Slope).empty() || Val(Text(Slope)) != 0) return {};
    return "A slope of 0 gives no line: no sample can be measured with it.";
}

}  // namespace kelvo
