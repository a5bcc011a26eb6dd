#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kelvo::simulator {

/// A pseudo-terminal that stands under a name of the user's, as a serial adapter does.
class PseudoTerminal {
 public:
    PseudoTerminal() = default;
    ~PseudoTerminal() { Close(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// Opens a new terminal and puts the symbolic link `link` to it; an empty name makes none. A link that is
    /// there already is replaced only when it is one of a simulator that has gone.
    /// @throws std::runtime_error with a text for the user.
    void Open(const std::string& link);
    void Close();
    /// Pulls the line out: whoever has it open is hung up on. The link stays and points nowhere until `Open`, as the
    /// lasting name of an adapter does.
    void Drop();

    /// Whether a name is a link that a simulator has left behind: it points to a terminal that has gone.
    static bool IsLeftOver(const std::string& link);

    bool IsOpen() const { return master_ >= 0; }
    int Handle() const { return master_; }
    /// Path of the end that the program opens.
    const std::string& Device() const { return device_; }

    /// What has come in, empty when nothing has or nobody has the other end open.
    std::vector<std::uint8_t> Read();
    /// Sends; what the line cannot take within a moment is lost, as on a real one.
    void Write(std::span<const std::uint8_t> bytes);

 private:
    void MakeLink(const std::string& link);

    int master_ = -1;
    std::string device_, link_;
};

}  // namespace kelvo::simulator
