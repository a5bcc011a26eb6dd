#include "link/Ports.h"

#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

#include "core/Dialogs.h"
#include "core/Settings.h"
#include "link/Frame.h"
#include "link/PortNames.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const Section = "Startup";
constexpr std::int32_t LowestRate = 300;

/// Properties of the open port, in the order they are set.
constexpr std::pair<PortProperty, int> Properties[] = {
    {PortProperty::InputLen, 0},        {PortProperty::InBufferSize, static_cast<int>(FrameBytes)},
    {PortProperty::InputMode, 1},       {PortProperty::Handshaking, 0},
    {PortProperty::OutBufferSize, 256}, {PortProperty::EOFEnable, 0},
    {PortProperty::RThreshold, 0},      {PortProperty::SThreshold, 0},
};

const char* const NoPortChosen = "Please select a COM port.";

std::string PortName(int number) {
    return "COM" + std::to_string(number);
}

/// A whole number of a hand-edited file, `otherwise` when it is below `lowest` or beyond `highest`.
template <typename T>
T WholeWithin(const std::string& text, T lowest, T highest, T otherwise) {
    const double value = std::nearbyint(Val(text));
    return value < lowest || value > highest ? otherwise : static_cast<T>(value);
}

}  // namespace

PortSettings PortSettings::Load(const std::string& file) {
    const PortSettings defaults;
    PortSettings settings;
    settings.BitRate =
        WholeWithin<std::int32_t>(ReadSetting(Section, "BitRate", file), LowestRate, INT32_MAX, defaults.BitRate);
    settings.PortNumber =
        WholeWithin<std::int16_t>(ReadSetting(Section, "PortNumber", file), 1, INT16_MAX, defaults.PortNumber);
    return settings;
}

bool PortSettings::Save(const std::string& file) const {
    std::error_code failed;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), failed);
    const bool rateKept = WriteSetting(Section, "BitRate", std::to_string(BitRate), file);
    return WriteSetting(Section, "PortNumber", std::to_string(PortNumber), file) && rateKept;
}

float CharTimeMs(std::int32_t bitRate) {
    return static_cast<float>(std::nearbyint(10000.0 / bitRate));
}

void CommPort::Load() {
    if (Loaded()) return;
    Dialog = PortDialog();
    Dialog.window = PortDialog::Window::Hidden;
    LoadPortSettings();
    ScanPorts();
    PortAvailable = false;
    for (const std::string& name : AvailablePorts)
        if (name == PortName(PortNumber)) PortAvailable = true;
    PortValid = fncCheckForValidPort();
    Dialog.cboPort = AvailablePorts;
    Dialog.portIndex = AvailablePorts.empty() ? -1 : 0;
    Dialog.cboBitRate.assign(BitRates.begin(), BitRates.end());
    Tell();
}

void CommPort::Unload() {
    Dialog = PortDialog();
    Tell();
}

void CommPort::SetWindow(PortDialog::Window window) {
    Dialog.window = window;
    Tell();
}

void CommPort::SetStatus(std::string text) {
    Dialog.txtStatus = std::move(text);
    Tell();
}

void CommPort::SelectRate(int index) {
    Dialog.rateIndex = index;
    SetPortTimeouts(BitRate);
}

void CommPort::cmdOK() {
    SetStatus({});
    // An earlier refusal has taken the choice away: no port is named, and the one in force stays.
    if (Dialog.portIndex < 0 && !Dialog.cboPort.empty()) {
        PortValid = false;
        RefusePort(NoPortChosen);
        return;
    }
    ApplyPortSelection();
    PortValid = fncCheckForValidPort();
    if (!PortValid) return;
    // What the analyst has just tested must not be lost when the link next reads its settings.
    const bool kept = SavePortSettings();
    prompts_.Message("The test on Comm" + std::to_string(PortNumber) + " is successful.");
    if (!kept)
        prompts_.Message("The port settings could not be written to " + settingsFile_ +
                             ": they are lost when the link stops. Choose the port again then.",
                         {}, Icon::Exclamation);
    SetWindow(PortDialog::Window::Hidden);
}

int CommPort::OpenForScan(int number) {
    // A port that an earlier step has left open is closed first: the number can be set only while closed.
    if (device_.PortOpen()) device_.SetPortOpen(false);
    device_.SetCommPort(number);
    const int code = device_.SetPortOpen(true);
    if (code != PortNoError && Dialog.advice.empty()) Dialog.advice = device_.Advice();
    return code;
}

void CommPort::ScanPorts() {
    AvailablePorts.clear();
    Dialog.advice.clear();
    const bool wasOpen = device_.PortOpen();
    for (int number = 1; number <= LastPort; ++number) {
        const int code = OpenForScan(number);
        if (code == PortNoError || code == PortAlreadyOpen) AvailablePorts.push_back(PortName(number));
    }
    if (device_.PortOpen()) device_.SetPortOpen(false);
    if (!wasOpen) return;
    device_.SetCommPort(PortNumber);
    device_.SetPortOpen(true);
}

void CommPort::LoadPortSettings() {
    const PortSettings settings = PortSettings::Load(settingsFile_);
    BitRate = settings.BitRate;
    PortNumber = settings.PortNumber;
}

bool CommPort::SavePortSettings() const {
    return PortSettings{BitRate, PortNumber}.Save(settingsFile_);
}

bool CommPort::fncInitializeComPort(std::int32_t bitRate, std::int16_t portNumber) {
    if (device_.PortOpen() && device_.SetPortOpen(false) != PortNoError) return false;
    if (device_.SetCommPort(portNumber) != PortNoError) return false;
    if (device_.SetSettings(std::to_string(bitRate) + ",N,8,1") != PortNoError) return false;
    for (const auto& [property, value] : Properties)
        if (device_.Set(property, value) != PortNoError) return false;
    const bool opened = device_.SetPortOpen(true) == PortNoError;
    Dialog.advice = opened ? std::string() : device_.Advice();
    Tell();
    return opened;
}

void CommPort::RefusePort(std::string status) {
    Dialog.portIndex = -1;
    Dialog.txtStatus = std::move(status);
    SetWindow(PortDialog::Window::Normal);
}

bool CommPort::fncCheckForValidPort() {
    if (PortNumber < 1) {
        RefusePort(NoPortChosen);
        return false;
    }
    if (!PortAvailable) {
        RefusePort(PortName(PortNumber) + " is unavailable. Please select a different port.");
        return false;
    }
    return Dialog.txtStatus.empty();
}

void CommPort::SetBitRateComboBox() {
    if (Dialog.rateIndex >= 0) return;
    const int last = static_cast<int>(Dialog.cboBitRate.size()) - 1;
    while (Dialog.rateIndex < last) {
        ++Dialog.rateIndex;
        if (Val(Dialog.cboBitRate[static_cast<std::size_t>(Dialog.rateIndex)]) == BitRate) break;
    }
    Tell();
}

void CommPort::SetPortComboBox() {
    if (Dialog.portIndex >= 0) return;
    const int last = static_cast<int>(Dialog.cboPort.size()) - 1;
    while (Dialog.portIndex < last) {
        ++Dialog.portIndex;
        if (Val(Dialog.cboPort[static_cast<std::size_t>(Dialog.portIndex)].substr(3)) == PortNumber) break;
    }
    Tell();
}

void CommPort::SetPortTimeouts(std::int32_t bitRate) {
    CommTimeouts timeouts = device_.GetCommTimeouts();
    if (!device_.PortOpen() || bitRate < 1) return;
    const auto characterTime = static_cast<std::uint32_t>(CharTimeMs(bitRate));
    timeouts.ReadIntervalTimeout = characterTime;
    timeouts.ReadTotalTimeoutMultiplier = characterTime;
    timeouts.WriteTotalTimeoutMultiplier = characterTime;
    timeouts.ReadTotalTimeoutConstant = 1000;
    timeouts.WriteTotalTimeoutConstant = 1000;
    device_.SetCommTimeouts(timeouts);
}

void CommPort::ApplyPortSelection() {
    const auto chosen = [](const std::vector<std::string>& list, int index) {
        return index < 0 ? std::string() : list.at(static_cast<std::size_t>(index));
    };
    const std::string rate = chosen(Dialog.cboBitRate, Dialog.rateIndex);
    if (!rate.empty()) BitRate = static_cast<std::int32_t>(Val(rate));
    // With no port to choose from, the one in force stays: it may be plugged in later.
    const std::string port = chosen(Dialog.cboPort, Dialog.portIndex);
    if (!port.empty()) PortNumber = static_cast<std::int16_t>(Val(port.substr(port.size() - 1)));
    fncInitializeComPort(BitRate, PortNumber);
}

}  // namespace kelvo
