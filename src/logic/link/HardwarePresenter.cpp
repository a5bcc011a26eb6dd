#include "link/HardwarePresenter.h"

#include "core/CustomIon.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/IonSettings.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "core/StatusMessages.h"
#include "core/StoredWithCalibration.h"
#include "core/TemperatureText.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr const char* Section = "Hareware";

constexpr const char* Failures[] = {
    "", "Please select one electrode.",
    "You need to select the temperature channel or input a default for the electrode 1",
    "You need to select an detected ion for the ISE measurement",
    "You need to select the temperature channel or input a default for the electrode 2"};

bool Plain(const std::string& text) {
    return Trim(text).find_first_not_of("0123456789.-+") == std::string::npos;
}

}  // namespace

void HardwarePresenter::Load() {
    number = {hardware_.ElectrodeNum[1], hardware_.ElectrodeNum[0], hardware_.ElectrodeNum[2]};
    txtC[RefType] = hardware_.RefElectrode[0];
    txtC[RefNumber] = hardware_.RefElectrode[1];
    oper = hardware_.Operator;
    isab = hardware_.ISAB;
    networkPrinter = hardware_.NetworkPrinter == 1;
    portIndex = hardware_.PortIndex;
    formatIndex = hardware_.DateFormat == 0 ? 0 : 1;
    sensor2Enabled = hardware_.SensorCount != 1;
    // The defaults are held behind a sensor that is in use, so that "Back" does not lose them.
    txtC[Celsius1] = hardware_.Temperature[1];
    txtC[Celsius2] = hardware_.Temperature[2];
    ionIndex = ion_.IonIndex;
    ionText = ionIndex == CustomIonRow ? ion_.Ions.names[CustomIonRow] : std::string();
    for (int i = 0; i < 5; ++i)
        Click(i, hardware_.Channel[static_cast<std::size_t>(i)] == 1);
    if (checked[Ph1] || checked[Ise]) return;
    numberVisible[0] = true;
    sensor2Visible = true;
}

void HardwarePresenter::Click(int i, bool on) {
    const bool wanted = on && !(i == Sensor2 && !sensor2Enabled);
    checked[static_cast<std::size_t>(i)] = wanted;
    switch (i) {
        case Ph1:
            numberVisible[0] = wanted;
            if (!wanted) break;
            if (checked[Ise]) Click(Ise, false);
            sensor2Visible = true;
            iseVisible = false;
            break;
        case Ise:
            numberVisible[1] = wanted;
            if (!wanted) break;
            if (checked[Ph1]) Click(Ph1, false);
            numberVisible[0] = false;
            iseVisible = true;
            // An ISE on channel 1 leaves no use for sensor 2, unless channel 2 has an electrode of its own.
            sensor2Visible = checked[Ph2];
            break;
        case Sensor1:
        case Sensor2: {
            if (wanted) break;
            const std::size_t channel = i == Sensor1 ? 0 : 1;
            txtC[channel] = hardware_.Temperature[channel + 1];
            ConvertTemperature(static_cast<int>(channel));
            break;
        }
        case Ph2:
            numberVisible[2] = wanted;
            sensor2Visible = wanted || checked[Ph1];
            break;
        default: break;
    }
}

bool HardwarePresenter::TemperatureVisible(int channel) const {
    if (channel == 1) return !checked[Sensor1];
    if (hardware_.SensorCount == 1 || checked[Sensor2]) return false;
    return !checked[Ise] || checked[Ph2];
}

bool HardwarePresenter::TemperatureLabelsVisible() const {
    return TemperatureVisible(1) || TemperatureVisible(2);
}

void HardwarePresenter::ConvertTemperature(int box) {
    const auto i = static_cast<std::size_t>(box);
    // Enter on the way past an empty °F leaves the °C alone.
    if (box >= Fahrenheit1 && Trim(txtC[i]).empty()) return;
    try {
        if (box == Celsius1 || box == Celsius2) txtC[i + 2] = FahrenheitFrom(txtC[i]);
        if (box == Fahrenheit1 || box == Fahrenheit2) txtC[i - 2] = CelsiusFrom(txtC[i]);
    } catch (const RuntimeError&) {
        // A temperature that no 32-bit number holds has no counterpart.
        (box < Fahrenheit1 ? txtC[i + 2] : txtC[i - 2]).clear();
    }
}

void HardwarePresenter::SelectIon(int index) {
    ionIndex = index;
    ionText.clear();
}

void HardwarePresenter::TypeIon(const std::string& text) {
    ionText = text;
    ionIndex = NoIon;
    for (int i = 0; i < CustomIonRow; ++i) {
        if (ion_.Ions.names[static_cast<std::size_t>(i)] != Trim(text)) continue;
        SelectIon(i);
        return;
    }
}

void HardwarePresenter::CustomIonDone() {
    ionIndex = CustomIonRow;
    ionText = ion_.CustomIon.empty() ? std::string("Custom") : ion_.CustomIon;
}

void HardwarePresenter::CommonReads() {
    hardware_.Operator = oper;
    hardware_.ISAB = isab;
    hardware_.RefElectrode[0] = txtC[RefType];
    hardware_.RefElectrode[1] = txtC[RefNumber];
    hardware_.PortIndex = static_cast<std::int16_t>(portIndex);
    hardware_.DateFormat = static_cast<std::int16_t>(formatIndex > 0 ? formatIndex : 0);
}

HardwarePresenter::Missing HardwarePresenter::Check() const {
    using enum Missing;
    const auto unknown = [this](int sensor, int box) {
        return !checked[static_cast<std::size_t>(sensor)] && Trim(txtC[static_cast<std::size_t>(box)]).empty();
    };
    if (!checked[Ph1] && !checked[Ise] && !checked[Ph2]) return Electrode;
    if ((checked[Ph1] || checked[Ise]) && unknown(Sensor1, Celsius1)) return Temperature1;
    if (checked[Ise] && ionIndex == NoIon && Trim(ionText).empty()) return Ion;
    if (checked[Ph2] && unknown(Sensor2, Celsius2)) return Temperature2;
    return Nothing;
}

bool HardwarePresenter::Back() {
    CommonReads();
    missing = Check();
    if (missing != Missing::Nothing) {
        prompts_.Message(Failures[static_cast<std::size_t>(missing)]);
        return false;
    }
    Store();
    for (const int channel : {1, 2}) {
        const auto i = static_cast<std::size_t>(channel - 1);
        if (FahrenheitWaits(channel))
            status_.StatusMessage = "The " + Trim(txtC[i + 2]) + " °F of channel " + TrimStr(channel) +
                                    " was not taken, since Enter was not pressed there: " + Trim(txtC[i]) +
                                    " °C stands.";
    }
    if (!WriteAll())
        status_.StatusMessage = "The settings could not be written to " + paths_.IniPath +
                                ": they hold until the program ends and are lost then.";
    return true;
}

void HardwarePresenter::Store() {
    if (checked[Ph1]) hardware_.ElectrodeNum[1] = number[0];
    if (checked[Ise]) {
        const bool typed = ionIndex == NoIon;
        ion_.IonIndex = static_cast<std::int16_t>(typed ? CustomIonRow : ionIndex);
        if (typed) ion_.CustomIon = Trim(ionText);
        hardware_.ElectrodeNum[0] = number[1];
    }
    if (checked[Ph2]) hardware_.ElectrodeNum[2] = number[2];
    for (std::size_t i = 0; i < hardware_.Channel.size(); ++i)
        hardware_.Channel[i] = checked[i] ? 1 : 0;
    hardware_.Temperature[1] = Trim(txtC[Celsius1]);
    hardware_.Temperature[2] = Trim(txtC[Celsius2]);
    hardware_.NetworkPrinter = networkPrinter ? 1 : 0;
    if (ion_.IonIndex == CustomIonRow) StoreCustomIon(state_);
    // The working temperature follows entry 0, which nothing fills: a calibration asks for its own temperature.
    ion_.CaliTemp = hardware_.Temperature[0];
    hardware_.HardwarePort = static_cast<std::int16_t>(hardware_.PortIndex + 1);
    DeriveInputs(state_);
    // A pH calibration in memory stays that of the electrodes that it was made with: `PhCaliElectrode`.
    stored_.FileElectrodeNum = hardware_.ElectrodeNum;
    stored_.FileRefElectrode = hardware_.RefElectrode;
}

bool HardwarePresenter::WriteAll() const {
    bool written = true;
    const auto write = [&](const std::string& key, const std::string& value) {
        written = WriteSetting(Section, key, value, paths_.IniPath) && written;
    };
    write("IonIndex", TrimStr(int{ion_.IonIndex}));
    if (ion_.IonIndex == CustomIonRow) {
        write("CustomIon", ion_.CustomIon);
        write("CustomWeight", Str(ion_.CustomWeight));
    }
    write("DateFormat", TrimStr(int{hardware_.DateFormat}));
    write("Operator", hardware_.Operator);
    write("RefType", hardware_.RefElectrode[0]);
    write("RefNum", hardware_.RefElectrode[1]);
    write("ISENum", hardware_.ElectrodeNum[0]);
    write("ph1Num", hardware_.ElectrodeNum[1]);
    write("pH2Num", hardware_.ElectrodeNum[2]);
    write("NetworkPrinter", Str(int{hardware_.NetworkPrinter}));
    write("ISAB", hardware_.ISAB);
    write("PortSetting", Str(int{hardware_.PortIndex}));
    for (std::size_t i = 0; i < hardware_.Channel.size(); ++i)
        write("Channel" + TrimStr(static_cast<int>(i)), TrimStr(int{hardware_.Channel[i]}));
    write("Temperature1", hardware_.Temperature[1]);
    write("Temperature2", hardware_.Temperature[2]);
    return written;
}

bool HardwarePresenter::FahrenheitWaits(int channel) const {
    const auto i = static_cast<std::size_t>(channel - 1);
    if (!TemperatureVisible(channel) || Trim(txtC[i + 2]).empty()) return false;
    try {
        const std::string told = FahrenheitFrom(txtC[i]);
        return told.empty() || Val(txtC[i + 2]) != Val(told);
    } catch (const RuntimeError&) {
        return true;
    }
}

std::string HardwarePresenter::StatusMessage() const {
    for (const int channel : {1, 2})
        if (FahrenheitWaits(channel))
            return "Press Enter in the °F box of channel " + TrimStr(channel) +
                   " to take its temperature; \"Back\" takes the one in °C.";
    for (const int channel : {1, 2}) {
        const std::string& celsius = txtC[static_cast<std::size_t>(channel - 1)];
        if (!TemperatureVisible(channel) || celsius.empty()) continue;
        if (!CelsiusOf(celsius)) return "The default temperature \"" + celsius + "\" is none that a solution can have.";
        if (Plain(celsius)) continue;
        return "The default temperature \"" + celsius + "\" is read as " + TrimStr(Val(celsius)) +
               " °C: a number ends where it stops being one, and the decimal mark is a dot.";
    }
    if (!checked[Ise]) return {};
    if (ionIndex == NoIon && !Trim(ionText).empty())
        return "\"" + ionText + "\" is not in the list: it will be the custom ion, with a weight of " +
               TrimStr(ion_.CustomWeight == 0 ? 100.0f : ion_.CustomWeight) +
               " g/mol. Choose \"Custom\" from the list to enter another weight.";
    if (ionIndex == CustomIonRow)
        return "Custom ion, " + TrimStr(ion_.CustomWeight == 0 ? ion_.Ions.weights[CustomIonRow] : ion_.CustomWeight) +
               " g/mol.";
    return {};
}

}  // namespace kelvo
