#pragma once

#include <QObject>
#include <QTimer>

#include "devices/SerialPortQt.h"
#include "link/Link.h"

namespace kelvo {

/// The link on the real event loop: its two timers and its serial port. A frame that ends the program is thrown
/// from an event of its own, after the link has been stopped, so that no code of the port is left half run.
class LinkQt : public QObject, private LinkHost {
    Q_OBJECT
 public:
    /// @param settingsFile  the two kept settings of the port
    LinkQt(StateOf<const HardwareSettings, ReadingSettings> state, Prompts& prompts, Clock& clock, PortNames names,
           const std::string& settingsFile);
    ~LinkQt() override;

    Link& GetLink() { return link_; }
    /// For a soak at raised speed: the time-out in milliseconds instead of `Link::TimeoutMs`.
    void SetTimeoutMs(int milliseconds) { tmrTimeout_.setInterval(milliseconds); }
    /// Where such a frame is reported instead of being thrown.
    std::function<void(const RuntimeError&)> Failed;

 private:
    void EnableInterval(bool enabled) override;
    void EnableTimeout(bool enabled) override;
    void TakeBytes();

    SerialPortQt device_;
    CommPort port_;
    Link link_;
    QTimer tmrTransferInterval_, tmrTimeout_;
};

}  // namespace kelvo
