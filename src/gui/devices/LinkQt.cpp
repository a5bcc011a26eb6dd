#include "devices/LinkQt.h"

namespace kelvo {

LinkQt::LinkQt(StateOf<const HardwareSettings, ReadingSettings> state, Prompts& prompts, Clock& clock, PortNames names,
               const std::string& settingsFile)
    : device_(std::move(names)),
      port_(device_, prompts, settingsFile),
      link_(state, port_, device_, prompts, clock, *this) {
    tmrTransferInterval_.setObjectName(QStringLiteral("tmrTransferInterval"));
    tmrTimeout_.setObjectName(QStringLiteral("tmrTimeout"));
    tmrTransferInterval_.setTimerType(Qt::PreciseTimer);
    tmrTransferInterval_.setInterval(Link::TransferIntervalMs);
    tmrTimeout_.setSingleShot(true);
    tmrTimeout_.setInterval(Link::TimeoutMs);
    connect(&tmrTransferInterval_, &QTimer::timeout, this, [this] { link_.IntervalTick(); });
    connect(&tmrTimeout_, &QTimer::timeout, this, [this] { link_.TimeoutTick(); });
    connect(&device_, &SerialPortQt::BytesArrived, this, &LinkQt::TakeBytes);
    connect(&device_, &SerialPortQt::Lost, this, [this] { link_.PortLost(); });
}

LinkQt::~LinkQt() {
    port_.WindowChanged = port_.Changed = nullptr;
    link_.StopLink();
}

void LinkQt::EnableInterval(bool enabled) {
    if (enabled)
        tmrTransferInterval_.start();
    else
        tmrTransferInterval_.stop();
}

void LinkQt::EnableTimeout(bool enabled) {
    if (enabled)
        tmrTimeout_.start();
    else
        tmrTimeout_.stop();
}

void LinkQt::TakeBytes() {
    try {
        link_.BytesArrived();
    } catch (const RuntimeError& error) {
        if (Failed) {
            Failed(error);
            return;
        }
        link_.StopLink();
        QMetaObject::invokeMethod(
            this, [error] { throw error; }, Qt::QueuedConnection);
    }
}

}  // namespace kelvo
