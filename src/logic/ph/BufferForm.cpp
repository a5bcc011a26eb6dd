#include "ph/BufferForm.h"

#include <cfloat>
#include <charconv>
#include <cmath>

#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Tables.h"
#include "core/TemperatureText.h"
#include "link/SensorFault.h"
#include "ph/PhCalibration.h"
#include "ph/PhValue.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double HighestPh = 14;
const char* const NoValue = ".0";  ///< potential before the first frame, as the mask writes 0

/// Whether what is read is what stands there. Other than for `IsNumber` that ends at the range of a double: `Val` reads
/// the nearest in it, and the analyst is to see that.
bool StandsAsRead(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

void BufferForm::Load() {
    electrode_ = phEntry_.PhElectrode;
    const bool first = First() || hardware_.SensorCount == 1;
    sensor_ = hardware_.Channel[first ? 2 : 4] != 1 ? NoSensor : first ? 1 : 3;
    live_.Open();
    closed_ = early_ = false;
    for (int i = 0; i < Size(); ++i)
        Set(i, {});
    Set(Mv, NoValue);
    Mutable(Mv).readOnly = true;
    Mutable(Celsius).readOnly = Mutable(Fahrenheit).readOnly = !TypedTemperature();
    if (TypedTemperature()) {
        Set(Celsius, hardware_.Temperature[static_cast<std::size_t>(electrode_)]);
        Set(Fahrenheit, FahrenheitOrNone(Text(Celsius)));
    }
    taken_ = {Text(Celsius), Text(Fahrenheit)};
    refused_.clear();
    SetNextField(Ph);
}

void BufferForm::Tick() {
    if (closed_ || live_.Tick() > TickLimit) return;
    if (!live_.Take()) return;
    early_ = false;
    Set(Mv, Format(live_.Average(First() ? 0 : 2), "#.0"));
    if (!TypedTemperature()) {
        const float celsius = SensorToCelsius(StandardSensor(), live_.Average(sensor_));
        Set(Celsius, Format(celsius, First() ? "#0.0" : "#.0"));
        Set(Fahrenheit, FahrenheitFrom(Text(Celsius)));
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
        case Fahrenheit:
            if (TakeTemperature(i))
                FocusOn(OkButton);
            else
                Refuse(i);
            break;
        default: break;
    }
}

void BufferForm::Left(int i) {
    const std::string text = Text(i);
    if (i >= Celsius && !IsTaken(i) && !TakeTemperature(i)) refused_ = text;
}

void BufferForm::Refuse(int box) {
    prompts_.Message(DataOutOfRange);
    FocusOn(box);
}

bool BufferForm::TakeTemperature(int i) {
    refused_.clear();
    const bool accepted = taken_.Take(Text(i), i == Fahrenheit);
    Set(Celsius, taken_.celsius);
    Set(Fahrenheit, taken_.fahrenheit);
    return accepted;
}

bool BufferForm::IsTaken(int i) const {
    return !TypedTemperature() || Text(i) == (i == Celsius ? taken_.celsius : taken_.fahrenheit);
}

bool BufferForm::Ok() {
    if (live_.State().kind == ReadingState::Kind::Waiting) {
        early_ = true;
        return false;
    }
    for (const int box : {Celsius, Fahrenheit}) {
        if (IsTaken(box) || TakeTemperature(box)) continue;
        Refuse(box);
        return false;
    }
    for (const int box : {Ph, Mv, Celsius}) {
        if (std::abs(Val(Text(box))) <= double{FLT_MAX}) continue;
        Refuse(box);
        return false;
    }
    for (int i = 0; i < Size(); ++i)
        phEntry_.txtph[static_cast<std::size_t>(i)] = Text(i);
    if (phCalibration_.BufferCount[0] > 0) --phCalibration_.BufferCount[0];
    closed_ = true;
    return true;
}

ReadingState BufferForm::Worth() const {
    return live_.State(First() ? 0 : 2);
}

std::string BufferForm::Remark() const {
    std::string remark;
    const auto add = [&remark](const std::string& line) { remark += (remark.empty() ? "" : " ") + line; };
    const auto judge = [&](int box, const char* what) {
        const std::string text = Trim(Text(box));
        const double value = Val(text);
        if (text.empty())
            add(std::string("No ") + what + " is typed: it counts as 0.");
        else if (!StandsAsRead(text))
            add("\"" + text + "\" counts as " + what + " " + TrimStr(value) + ".");
    };
    if (!refused_.empty()) add("\"" + refused_ + "\" is no temperature: " + Text(Celsius) + " °C stands.");
    if (early_) add("OK waits for the first reading of this buffer.");
    judge(Ph, "pH");
    if (TypedTemperature()) judge(Celsius, "temperature");
    const double ph = Val(Text(Ph));
    if (ph < 0 || ph > HighestPh) add("The pH of a buffer lies between 0 and 14.");
    if (TypedTemperature() || Text(Celsius).empty()) return remark;
    const std::string fault = SensorFaultText(sensor_ == 1 ? 1 : 2, ToSingle(Val(Text(Celsius))));
    if (!fault.empty())
        add("The " + fault + (fault.back() == '?' ? " Its" : "; its") + " temperature counts all the same.");
    return remark;
}

void BufferForm::Cancel() {
    phEntry_.PhCancelled = -1;
    closed_ = true;
}

}  // namespace kelvo
