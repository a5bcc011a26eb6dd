#include "ph/BufferForm.h"

#include <charconv>

#include "core/Messages.h"
#include "ph/PhValue.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double HighestPh = 14;
const char* const NoValue = ".0";  ///< potential before the first frame, as the mask writes 0

/// Whether the whole text is a number, so that what is read is what stands there.
bool IsNumber(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

std::string FahrenheitText(const std::string& celsius) {
    return Format(CelsiusToFahrenheit(static_cast<float>(Val(celsius))), "#0.0");
}

}  // namespace

void BufferForm::Load() {
    electrode_ = state_.PhCaption == "Electrode 2" ? 2 : 1;
    const bool first = First() || state_.SensorCount == 1;
    sensor_ = state_.Channel[first ? 2 : 4] != 1 ? NoSensor : first ? 1 : 3;
    live_.Open();
    closed_ = false;
    for (int i = 0; i < Size(); ++i)
        Set(i, {});
    Set(Mv, NoValue);
    Mutable(Mv).readOnly = true;
    Mutable(Celsius).readOnly = Mutable(Fahrenheit).readOnly = !TypedTemperature();
    if (TypedTemperature()) {
        Set(Celsius, state_.Temperature[static_cast<std::size_t>(electrode_)]);
        Set(Fahrenheit, FahrenheitText(Text(Celsius)));
    }
    SetNextField(Ph);
}

void BufferForm::Tick() {
    if (closed_ || live_.Tick() > TickLimit) return;
    if (!live_.Take()) return;
    Set(Mv, Format(live_.Average(First() ? 0 : 2), "#.0"));
    if (!TypedTemperature()) {
        const float celsius = SensorToCelsius(state_.Sensor, live_.Average(sensor_));
        Set(Celsius, Format(celsius, First() ? "#0.0" : "#.0"));
        Set(Fahrenheit, FahrenheitText(Text(Celsius)));
    }
    live_.Count();
}

void BufferForm::Enter(int i) {
    switch (i) {
        case Ph:
            SetNextField(NoFocus);
            FocusOn(OkButton);
            break;
        case Celsius:
            Set(Fahrenheit, FahrenheitText(Text(Celsius)));
            FocusOn(OkButton);
            break;
        case Fahrenheit:
            Set(Celsius, Format(FahrenheitToCelsius(static_cast<float>(Val(Text(Fahrenheit)))), "#0.0"));
            FocusOn(OkButton);
            break;
        default: break;
    }
}

bool BufferForm::Ok() {
    try {
        for (const int box : {Ph, Mv, Celsius})
            ToSingle(Val(Text(box)));
    } catch (const RuntimeError&) {
        prompts_.Message(DataOutOfRange);
        FocusOn(Ph);
        return false;
    }
    for (int i = 0; i < Size(); ++i)
        state_.txtph[static_cast<std::size_t>(i)] = Text(i);
    if (state_.BufferCount[0] > 0) --state_.BufferCount[0];
    closed_ = true;
    return true;
}

ReadingState BufferForm::Worth() const {
    return live_.State();
}

std::string BufferForm::Remark() const {
    std::string remark;
    const auto add = [&remark](const std::string& line) { remark += (remark.empty() ? "" : " ") + line; };
    const auto judge = [&](int box, const char* what) {
        const std::string text = Trim(Text(box));
        const double value = Val(text);
        if (text.empty())
            add(std::string("No ") + what + " is typed: it counts as 0.");
        else if (!IsNumber(text))
            add("\"" + text + "\" counts as " + what + " " + TrimStr(value) + ".");
    };
    judge(Ph, "pH");
    if (TypedTemperature()) judge(Celsius, "temperature");
    const double ph = Val(Text(Ph));
    if (ph < 0 || ph > HighestPh) add("The pH of a buffer lies between 0 and 14.");
    if (!TypedTemperature() && !Text(Celsius).empty() && Val(Text(Celsius)) < 0)
        add("The temperature sensor does not work; its temperature counts all the same.");
    return remark;
}

void BufferForm::Cancel() {
    state_.PhCancelled = -1;
    closed_ = true;
}

}  // namespace kelvo
