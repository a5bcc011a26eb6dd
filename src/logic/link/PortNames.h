#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// Highest port number that a scan tries.
constexpr int LastPort = 16;

/// Folder of the user's own port settings: "$XDG_CONFIG_HOME/kelvo/", else "$HOME/.config/kelvo/".
std::string PortConfigFolder();

/// Which device of the machine a port number means. COMn is the link of that name in the folder `links` when
/// there is one, even when it points nowhere just now (its device may come back); otherwise the n-th serial device.
class PortNames {
 public:
    /// @param links    folder of the links, ends with '/'
    /// @param classes  where the system lists its terminals; a test hands in a folder of its own
    explicit PortNames(std::string links, std::string classes = "/sys/class/tty/");

    /// Path to open, empty when the machine has no such port.
    std::string DeviceOf(int number) const;
    /// Whether the user has pinned that number.
    bool Pinned(int number) const;

    /// Serial devices of the machine by name, built-in ports before adapters, numbers in their natural order: a
    /// terminal counts when real hardware stands behind it. Built-in ports that the machine only reserves do not.
    std::vector<std::string> SerialDevices() const;

 private:
    std::string links_, classes_;
};

/// What mends a device that may not be opened, on Debian: what is wrong, and in a line of its own the one command.
std::string PermissionAdvice(const std::string& device);

}  // namespace kelvo
