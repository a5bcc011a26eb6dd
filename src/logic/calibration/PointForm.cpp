#include "calibration/PointForm.h"

#include <cmath>
#include <utility>

#include "calibration/CaliSession.h"
#include "calibration/CalibrationState.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/TemperatureText.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr char32_t LargestDigitKey = 57;
constexpr double LargestCelsius = 1e30;  ///< beyond it no 32-bit Fahrenheit exists

}  // namespace

void PointForm::Begin() {
    for (int i = 0; i < Size(); ++i)
        Set(i, {});
    startMeasurement_ = workedOutAgain_ = false;
    filled_ = {};
    const bool first = calibration_.CurrentPoint <= 1;
    const bool byHand = hardware_.Channel[2] == 0 || !calibration_.OnLine;
    defaultHint_ = first && byHand;
    Mutable(Celsius).visible = Mutable(Fahrenheit).visible = first;
    temperature_ = {};
    if (byHand) {
        Set(Celsius, calibration_.CaliTemp);
        ConvertTemperature(Celsius);
    }
    Mutable(Potential).visible = !calibration_.OnLine;
    const int nextField = calibration_.OnLine ? Ppm : Potential;
    SetNextField(nextField);
    FocusOn(nextField);
}

bool PointForm::KeyAllowed(int i, char32_t key) const {
    if (key >= U'0' && key <= LargestDigitKey) return true;
    if (key == U'-' || key == U'.' || key == U'E') return true;
    return i == Molar && key > LargestDigitKey;
}

void PointForm::KeyRefused(int) {
    prompts_.Message("Invalid data type, please re-enter!");
}

void PointForm::Enter(int i) {
    switch (i) {
        case Potential:
            SetNextField(Ppm);
            FocusOn(Ppm);
            return;
        case Ppm:
        case Molar:
        case LogC: EnterConcentration(i); return;
        default:
            if (!ConvertTemperature(i)) {
                FocusOn(i);
                return;
            }
            SetNextField(NoFocus);
            FocusOn(OkButton);
    }
}

bool PointForm::ConcentrationEmpty() const {
    return Text(Ppm).empty() && Text(Molar).empty() && Text(LogC).empty();
}

void PointForm::Incomplete(const std::string& title) {
    prompts_.Message("Incomplete data input, please check.", title);
    SetNextField(Ppm);
    FocusOn(Ppm);
}

void PointForm::EnterConcentration(int i) {
    const double value = Val(Text(i));
    if (value == 0) {
        if (i == LogC && ConcentrationEmpty()) {
            Incomplete("Data Input");
            return;
        }
        const bool last = i == LogC && !TemperatureShown();
        SetNextField(last ? NoFocus : i + 1);
        FocusOn(last ? OkButton : i + 1);
        return;
    }
    startMeasurement_ = calibration_.OnLine;
    try {
        FillOtherUnits(i, value);
    } catch (const RuntimeError&) {
        startMeasurement_ = false;
        prompts_.Message(DataOutOfRange);
        SetNextField(i);
        FocusOn(i);
        return;
    }
    FocusAfterConcentration();
}

void PointForm::FillOtherUnits(int i, double value) {
    std::string ppm = Text(Ppm);
    std::string molar = Text(Molar);
    std::string logC = Text(LogC);
    switch (i) {
        case Ppm:
            molar = Format(PpmToMolar(calibration_.Ions, value, calibration_.IonIndex), "0.00E-00");
            logC = Format(Log10(Val(molar)), "#0.0000");
            break;
        case Molar:
            ppm = Format(MolarToPpm(calibration_.Ions, value, calibration_.IonIndex), "#.0");
            logC = Str(Log10(Val(molar)));
            break;
        default:
            molar = Format(Finite(std::pow(10.0, value)), "#.00E-00");
            ppm = Format(MolarToPpm(calibration_.Ions, Val(molar), calibration_.IonIndex), "#.0");
    }
    workedOutAgain_ = false;
    // Nothing is shown before everything could be worked out.
    Set(Ppm, std::move(ppm));
    Set(Molar, std::move(molar));
    Set(LogC, std::move(logC));
    filled_ = {Text(Ppm), Text(Molar), Text(LogC)};
}

void PointForm::FocusAfterConcentration() {
    const bool toTemperature = TemperatureShown() && calibration_.CurrentPoint <= 1;
    SetNextField(toTemperature ? Celsius : NoFocus);
    FocusOn(toTemperature ? Celsius : OkButton);
}

bool PointForm::ConvertTemperature(int i) {
    const int other = i == Celsius ? Fahrenheit : Celsius;
    try {
        const float typed = ToSingle(Val(Text(i)));
        Set(other, i == Celsius ? FahrenheitText(typed) : CelsiusText(typed));
        temperature_ = {Text(Celsius), Text(Fahrenheit)};
        return true;
    } catch (const RuntimeError&) {
        prompts_.Message(DataOutOfRange);
        Set(Celsius, temperature_.first);
        Set(Fahrenheit, temperature_.second);
        return false;
    }
}

bool PointForm::TemperatureFits() {
    if (!TemperatureShown() || std::abs(Val(Text(Celsius))) < LargestCelsius) return true;
    ConvertTemperature(Celsius);
    FocusOn(Celsius);
    return false;
}

bool PointForm::Ok() {
    bool complete = true;
    for (int i = Potential; i <= LogC; ++i)
        complete = complete && !Text(i).empty();
    if (complete) {
        if (!TemperatureFits()) return false;
        try {
            Store();
        } catch (const RuntimeError&) {
            prompts_.Message(DataOutOfRange);
            FocusOn(Potential);
            return false;
        }
        return true;
    }
    if (ConcentrationEmpty()) {
        Incomplete({});
        return false;
    }
    const std::array<std::string, 3> before = {Text(Ppm), Text(Molar), Text(LogC)};
    for (int i = Ppm; i <= LogC; ++i) {
        if (Text(i).empty()) continue;
        Enter(i);
        break;
    }
    workedOutAgain_ = !filled_[0].empty() && filled_ != before && !before[1].empty() && !before[2].empty();
    if (!calibration_.OnLine && Text(Potential).empty() && !Text(Molar).empty() && !Text(LogC).empty()) {
        SetNextField(Potential);
        FocusOn(Potential);
    }
    return false;
}

void PointForm::Store() {
    CaliSession(state_, prompts_)
        .StorePoint(calibration_.CurrentPoint, Val(Text(Potential)), Val(Text(Ppm)), Val(Text(Molar)), Val(Text(LogC)));
    if (calibration_.CurrentPoint == 1) calibration_.PointTemp = Text(Celsius);
    calibration_.PointRunning = 0;
}

void PointForm::Cancel() {
    calibration_.ReadingActive = false;
    calibration_.PointRunning = 0;
    for (int i = 0; i < Size(); ++i)
        Set(i, {});
}

bool PointForm::TakeMeasurementStart() {
    return std::exchange(startMeasurement_, false);
}

bool PointForm::HoldsEntries() const {
    return calibration_.CurrentPoint > 1 || !ConcentrationEmpty() || (!calibration_.OnLine && !Text(Potential).empty());
}

void PointForm::BeginMeasurement() {
    Mutable(Potential).visible = true;
    Mutable(Potential).readOnly = true;
}

void PointForm::MeasuredTemperature(float celsius) {
    calibration_.CaliTemp = Format(celsius, "#0.0");
    Set(Celsius, calibration_.CaliTemp);
    Set(Fahrenheit, FahrenheitText(celsius));
}

std::string PointForm::StatusMessage() const {
    const std::array<std::string, 3> now = {Text(Ppm), Text(Molar), Text(LogC)};
    if (!filled_[0].empty() && now != filled_)
        return "ppm, mol/L and LogC no longer belong together: press Enter in the one that holds, or they are stored "
               "as "
               "they stand.";
    for (int i = Ppm; i <= LogC; ++i)
        if (!Text(i).empty() && Val(Text(i)) == 0)
            return "A value of 0 fills no other unit: LogC 0 is entered as 1 mol/L.";
    if (workedOutAgain_)
        return "The potential E (mV) is still empty. OK has worked out mol/L and LogC again from the ppm box.";
    if (!calibration_.OnLine && Text(Potential).empty() && !ConcentrationEmpty())
        return "The potential E (mV) is still empty.";
    const bool sensorFills = calibration_.OnLine && hardware_.Channel[2] == 1;
    if (TemperatureShown() && !sensorFills && Trim(Text(Celsius)).empty())
        return "No temperature yet: type it in °C or °F and press Enter. An empty box counts as 0 °C wherever the "
               "temperature enters a calculation.";
    return {};
}

}  // namespace kelvo
