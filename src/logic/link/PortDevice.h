#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kelvo {

/// Codes of the port layer's failures; 0 is none.
enum PortError : int {
    PortNoError = 0,
    PortStillOpen = 8000,    ///< the number can be set only while the port is closed
    PortAbsent = 8002,       ///< there is no such port, or it cannot be used
    PortAlreadyOpen = 8005,  ///< another program, or this one, has it open
    PortNotOpen = 8018,      ///< reading or writing needs an open port
    PortBadProperty = 380,   ///< a property value that the line cannot have
};

/// Whole-number properties of a port.
enum class PortProperty {
    InputLen,       ///< bytes that one read takes, 0 all
    InBufferSize,   ///< bytes that the receive buffer holds
    OutBufferSize,  ///< bytes that the send buffer holds
    InputMode,      ///< 1: a read yields bytes
    Handshaking,    ///< 0: none
    EOFEnable,      ///< 0: an end-of-file character is a byte like any other
    RThreshold,     ///< received bytes that raise the receive event, 0: no event
    SThreshold,     ///< the same for sent bytes
};

/// The five time-outs of an open port, milliseconds.
struct CommTimeouts {
    std::uint32_t ReadIntervalTimeout = 0;
    std::uint32_t ReadTotalTimeoutMultiplier = 0;
    std::uint32_t ReadTotalTimeoutConstant = 0;
    std::uint32_t WriteTotalTimeoutMultiplier = 0;
    std::uint32_t WriteTotalTimeoutConstant = 0;
    bool operator==(const CommTimeouts&) const = default;
};

/// One serial port of the machine, chosen by its number. Operations give a `PortError` back and never throw;
/// after a failure everything is as it was before the call. Losing the device closes the port by itself.
class PortDevice {
 public:
    virtual ~PortDevice() = default;

    virtual int CommPort() const = 0;
    /// @return PortStillOpen while the port is open.
    virtual int SetCommPort(int number) = 0;
    /// Rate and framing, "9600,N,8,1".
    virtual int SetSettings(const std::string& settings) = 0;
    virtual int Set(PortProperty property, int value) = 0;
    virtual int Get(PortProperty property) const = 0;

    virtual bool PortOpen() const = 0;
    /// Opens or closes. Opening gives PortAlreadyOpen for a port in use, PortAbsent for any other refusal.
    virtual int SetPortOpen(bool open) = 0;
    /// What the analyst can do about the last opening that failed: in a line or two, empty when there is nothing to
    /// say.
    virtual std::string Advice() const = 0;

    /// Bytes received and not yet read; 0 while closed.
    virtual int InBufferCount() const = 0;
    virtual void DiscardInput() = 0;
    /// Takes `InputLen` bytes, or all there are.
    virtual std::vector<std::uint8_t> Input() = 0;
    virtual int Output(std::span<const std::uint8_t> bytes) = 0;

    /// The system's handle of the open port, -1 while closed.
    virtual std::intptr_t CommID() const = 0;
    virtual CommTimeouts GetCommTimeouts() const = 0;
    virtual void SetCommTimeouts(const CommTimeouts& timeouts) = 0;
};

}  // namespace kelvo
