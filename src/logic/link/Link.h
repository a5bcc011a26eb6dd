#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/LinkSwitch.h"
#include "core/StateOf.h"
#include "link/Ports.h"
#include "text/RuntimeError.h"

namespace kelvo {

class Clock;
class Prompts;

/// What the link needs of the event loop around it. The two timers tick the link by `IntervalTick` and
/// `TimeoutTick`; the port calls `BytesArrived` and `PortLost`.
class LinkHost {
 public:
    virtual ~LinkHost() = default;
    /// `tmrTransferInterval`, `TransferIntervalMs` apart, until switched off.
    virtual void EnableInterval(bool enabled) = 0;
    /// `tmrTimeout`, one shot after `TimeoutMs`; enabling starts it anew.
    virtual void EnableTimeout(bool enabled) = 0;
};

/// State of the interface as the link light shows it.
struct LinkStatus {
    enum class Kind {
        Off,      ///< the link is stopped
        Waiting,  ///< no good frame yet since the link was started
        Live,     ///< good frames come in the rhythm of the polling
        Late,     ///< the last good frame is a little old
        Silent,   ///< no good frame for `seconds`
        Lost,     ///< the port is not open
    };
    Kind kind = Kind::Off;
    int seconds = 0;  ///< since the last good frame, or since the link was started
    bool operator==(const LinkStatus&) const = default;
};

/// "Interface: live", "Interface: late", "Interface: silent for 12 s", "Interface: port lost", "Interface: off";
/// "Interface: waiting", and after a silence "Interface: waiting for 12 s".
std::string LinkStatusText(const LinkStatus& light);

/// The latest good frame, for whoever shows its values or judges by them.
struct FrameMark {
    std::uint64_t number = 0;  ///< 0: none since the link was started; grows with each frame, over all starts
    /// Good frames in an unbroken rhythm, this one the last. 0 when it came late itself, when the next one is late
    /// already, and when the port has been lost.
    std::uint64_t inTime = 0;
    double age = 0;  ///< seconds since it came
};

/// Counts of what the link has met since it was made.
struct LinkCounts {
    std::uint64_t requests = 0, good = 0, unfinished = 0, timedOut = 0, lost = 0;
};

/// Polls the interface once a second and keeps `Reading`. A request goes out, the answer is awaited for
/// 3000 ms by events, never by a loop; ticks that fall into a wait are swallowed. A dead interface is silent: the
/// last values stand. A port that is lost, or was never there, is tried again at each tick.
class Link : public LinkSwitch {
 public:
    static constexpr int TransferIntervalMs = 1000, TimeoutMs = 3000;

    Link(StateOf<const HardwareSettings, ReadingSettings> state, CommPort& commPort, PortDevice& device,
         Prompts& prompts, Clock& clock, LinkHost& host)
        : hardware_(state),
          reading_(state),
          commPort_(commPort),
          device_(device),
          prompts_(prompts),
          clock_(clock),
          host_(host) {}

    /// Opens the port and starts the polling; shows the port dialog when the port is not usable. Does nothing for
    /// an interface that is not the serial one. Started while it runs it begins afresh.
    void StartLink() override;
    /// `StartLink` for a route that cannot go on without the interface. @return whether the port is open; if it is not,
    /// the link is stopped again, unless the port dialog has come up to repair it
    bool StartReady();
    /// Stops the polling, closes the port, keeps the port settings, unloads the dialog. Safe at any moment of a
    /// transfer, and when nothing runs.
    void StopLink() override;
    /// Whether there is a link to stop: it polls, or the port is open.
    bool PortOpen() const override { return polling_ || device_.PortOpen(); }

    void IntervalTick();
    void TimeoutTick();
    /// @throws RuntimeError 13 when the last byte of a frame cannot be read as a number; the program is to end.
    void BytesArrived();
    /// The device has gone while it was open; it is closed already.
    void PortLost();

    /// Whether a good frame has come since the link was last started; it stays so after the stop.
    bool HasData() const { return hasData_; }
    FrameMark LatestFrame() const;
    LinkStatus Status() const;
    const LinkCounts& Counts() const { return counts_; }
    CommPort& Port() { return commPort_; }

    bool TransferBusy = false;     ///< a request and its wait are in progress
    bool TimedOut = false;         ///< set by the time-out, read and cleared by the end of the wait
    std::string LastTransferTime;  ///< time stamp of the last finished cycle
    std::vector<std::uint8_t> FrameBuffer;

    /// Called after each good frame.
    std::function<void()> FrameTaken;

 private:
    bool OpenPort();
    void SendRequest(const std::string& form);
    void RunTransfer();
    void AwaitFrame();
    void EndWait();
    void TakeFrame();
    void FinishTransfer();
    void ReceiveEvent();
    std::string TimeStamp() const;

    const HardwareSettings& hardware_;
    ReadingSettings& reading_;
    CommPort& commPort_;
    PortDevice& device_;
    Prompts& prompts_;
    Clock& clock_;
    LinkHost& host_;

    bool polling_ = false, waiting_ = false, hasData_ = false;
    unsigned cycle_ = 0;  ///< counts starts and stops, so that a box answered after one ends no newer transfer
    std::vector<std::uint8_t> request_;
    double lastGood_ = 0;  ///< time of the last good frame, of the start before there is one
    std::uint64_t inTime_ = 0;
    LinkCounts counts_;
};

}  // namespace kelvo
