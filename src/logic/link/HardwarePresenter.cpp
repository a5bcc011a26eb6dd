#include "link/HardwarePresenter.h"

#include "core/Settings.h"
#include "core/Startup.h"
#include "core/TemperatureText.h"
#include "help/CustomIon.h"
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
    number = {state_.ElectrodeNum[1], state_.ElectrodeNum[0], state_.ElectrodeNum[2]};
    txtC[RefType] = state_.RefElectrode[0];
    txtC[RefNumber] = state_.RefElectrode[1];
    oper = state_.Operator;
    isab = state_.ISAB;
    networkPrinter = state_.NetworkPrinter == 1;
    portIndex = state_.PortIndex;
    formatIndex = state_.DateFormat == 0 ? 0 : 1;
    sensor2Enabled = state_.SensorCount != 1;
    // The defaults are held behind a sensor that is in use, so that "Back" does not lose them.
    txtC[Celsius1] = state_.Temperature[1];
    txtC[Celsius2] = state_.Temperature[2];
    ionIndex = state_.IonIndex;
    ionText = ionIndex == CustomIonRow ? state_.Ions.names[CustomIonRow] : std::string();
    for (int i = 0; i < 5; ++i)
        Click(i, state_.Channel[static_cast<std::size_t>(i)] == 1);
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
            txtC[channel] = state_.Temperature[channel + 1];
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
    if (state_.SensorCount == 1 || checked[Sensor2]) return false;
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
        if (state_.Ions.names[static_cast<std::size_t>(i)] != Trim(text)) continue;
        SelectIon(i);
        return;
    }
}

void HardwarePresenter::CustomIonDone() {
    ionIndex = CustomIonRow;
    ionText = state_.CustomIon.empty() ? std::string("Custom") : state_.CustomIon;
}

void HardwarePresenter::CommonReads() {
    state_.Operator = oper;
    state_.ISAB = isab;
    state_.RefElectrode[0] = txtC[RefType];
    state_.RefElectrode[1] = txtC[RefNumber];
    state_.PortIndex = static_cast<std::int16_t>(portIndex);
    state_.DateFormat = static_cast<std::int16_t>(formatIndex > 0 ? formatIndex : 0);
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
            state_.StatusMessage = "The " + Trim(txtC[i + 2]) + " °F of channel " + TrimStr(channel) +
                                   " was not taken, since Enter was not pressed there: " + Trim(txtC[i]) +
                                   " °C stands.";
    }
    if (!WriteAll())
        state_.StatusMessage = "The settings could not be written to " + state_.IniPath +
                               ": they hold until the program ends and are lost then.";
    return true;
}

void HardwarePresenter::Store() {
    if (checked[Ph1]) state_.ElectrodeNum[1] = number[0];
    if (checked[Ise]) {
        const bool typed = ionIndex == NoIon;
        state_.IonIndex = static_cast<std::int16_t>(typed ? CustomIonRow : ionIndex);
        if (typed) state_.CustomIon = Trim(ionText);
        state_.ElectrodeNum[0] = number[1];
    }
    if (checked[Ph2]) state_.ElectrodeNum[2] = number[2];
    for (std::size_t i = 0; i < state_.Channel.size(); ++i)
        state_.Channel[i] = checked[i] ? 1 : 0;
    state_.Temperature[1] = Trim(txtC[Celsius1]);
    state_.Temperature[2] = Trim(txtC[Celsius2]);
    state_.NetworkPrinter = networkPrinter ? 1 : 0;
    if (state_.IonIndex == CustomIonRow) StoreCustomIon(state_);
    // The working temperature follows entry 0, which nothing fills: a calibration asks for its own temperature.
    state_.CaliTemp = state_.Temperature[0];
    state_.HardwarePort = static_cast<std::int16_t>(state_.PortIndex + 1);
    DeriveInputs(state_);
    // A pH calibration in memory stays that of the electrodes that it was made with: `PhCaliElectrode`.
    state_.FileElectrodeNum = state_.ElectrodeNum;
    state_.FileRefElectrode = state_.RefElectrode;
}

bool HardwarePresenter::WriteAll() const {
    bool written = true;
    const auto write = [&](const std::string& key, const std::string& value) {
        written = WriteSetting(Section, key, value, state_.IniPath) && written;
    };
    write("IonIndex", TrimStr(int{state_.IonIndex}));
    if (state_.IonIndex == CustomIonRow) {
        write("CustomIon", state_.CustomIon);
        write("CustomWeight", Str(state_.CustomWeight));
    }
    write("DateFormat", TrimStr(int{state_.DateFormat}));
    write("Operator", state_.Operator);
    write("RefType", state_.RefElectrode[0]);
    write("RefNum", state_.RefElectrode[1]);
    write("ISENum", state_.ElectrodeNum[0]);
    write("ph1Num", state_.ElectrodeNum[1]);
    write("pH2Num", state_.ElectrodeNum[2]);
    write("NetworkPrinter", Str(int{state_.NetworkPrinter}));
    write("ISAB", state_.ISAB);
    write("PortSetting", Str(int{state_.PortIndex}));
    for (std::size_t i = 0; i < state_.Channel.size(); ++i)
        write("Channel" + TrimStr(static_cast<int>(i)), TrimStr(int{state_.Channel[i]}));
    write("Temperature1", state_.Temperature[1]);
    write("Temperature2", state_.Temperature[2]);
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
               TrimStr(state_.CustomWeight == 0 ? 100.0f : state_.CustomWeight) +
               " g/mol. Choose \"Custom\" from the list to enter another weight.";
    if (ionIndex == CustomIonRow)
        return "Custom ion, " +
               TrimStr(state_.CustomWeight == 0 ? state_.Ions.weights[CustomIonRow] : state_.CustomWeight) + " g/mol.";
    return {};
}

}  // namespace kelvo
