#include "link/PortNames.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <tuple>

namespace kelvo {
namespace {

namespace fs = std::filesystem;

// Families in the order of their ports: built-in first, so that a plugged adapter does not renumber them.
constexpr std::array Families = {"ttyS", "ttyAMA", "ttyUSB", "ttyACM"};

struct Terminal {
    std::size_t family;
    int number;
    std::string name;
    bool operator<(const Terminal& other) const {
        return std::tie(family, number, name) < std::tie(other.family, other.number, other.name);
    }
};

bool ParseTerminal(const std::string& name, Terminal& out) {
    for (std::size_t family = 0; family < Families.size(); ++family) {
        const std::string head = Families[family];
        if (!name.starts_with(head) || name.size() == head.size() || name.size() > head.size() + 5) continue;
        const std::string digits = name.substr(head.size());
        if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) continue;
        out = {family, std::atoi(digits.c_str()), name};
        return true;
    }
    return false;
}

/// The kernel reserves a few built-in ports whether or not the board has them; the type of those is 0.
bool HasHardware(const fs::path& terminal) {
    std::error_code failed;
    if (!fs::exists(terminal / "device", failed)) return false;
    std::ifstream type(terminal / "type");
    int kind = 1;
    return !(type >> kind) || kind != 0;
}

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::string PortConfigFolder() {
    const std::string config = Variable("XDG_CONFIG_HOME");
    // A relative folder there is to be ignored, by the base directory rules of the desktop.
    if (config.starts_with('/')) return config + "/kelvo/";
    return Variable("HOME") + "/.config/kelvo/";
}

PortNames::PortNames(std::string links, std::string classes) : links_(std::move(links)), classes_(std::move(classes)) {}

bool PortNames::Pinned(int number) const {
    std::error_code failed;
    const auto status = fs::symlink_status(links_ + "COM" + std::to_string(number), failed);
    return fs::exists(status);
}

std::string PortNames::DeviceOf(int number) const {
    if (Pinned(number)) {
        const fs::path link = links_ + "COM" + std::to_string(number);
        std::error_code failed;
        const fs::path device = fs::canonical(link, failed);
        return failed ? link.string() : device.string();
    }
    const std::vector<std::string> devices = SerialDevices();
    if (number < 1 || static_cast<std::size_t>(number) > devices.size()) return {};
    return devices[static_cast<std::size_t>(number - 1)];
}

std::vector<std::string> PortNames::SerialDevices() const {
    std::vector<Terminal> terminals;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(classes_, failed)) {
        Terminal terminal{};
        if (ParseTerminal(entry.path().filename().string(), terminal) && HasHardware(entry.path()))
            terminals.push_back(terminal);
    }
    std::sort(terminals.begin(), terminals.end());
    std::vector<std::string> devices;
    devices.reserve(terminals.size());
    for (const Terminal& terminal : terminals)
        devices.push_back("/dev/" + terminal.name);
    return devices;
}

std::string PermissionAdvice(const std::string& device) {
    return "No permission to open " + device + ". To mend it, run this once and log in again:\n" +
           "sudo usermod -aG dialout $USER";
}

}  // namespace kelvo
