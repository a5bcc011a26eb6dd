#include "link/Link.h"

#include <cstdio>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/ReadingSettings.h"
#include "link/Frame.h"

namespace kelvo {
namespace {

// A polled frame is at most one interval and its own travel old; beyond the time-out the interface is silent.
constexpr double LiveSeconds = 1.6, LateSeconds = 3.6;

}  // namespace

std::string LinkStatusText(const LinkStatus& light) {
    switch (light.kind) {
        case LinkStatus::Kind::Waiting:
            return light.seconds < LateSeconds ? "Interface: waiting"
                                               : "Interface: waiting for " + std::to_string(light.seconds) + " s";
        case LinkStatus::Kind::Live: return "Interface: live";
        case LinkStatus::Kind::Late: return "Interface: late";
        case LinkStatus::Kind::Silent: return "Interface: silent for " + std::to_string(light.seconds) + " s";
        case LinkStatus::Kind::Lost: return "Interface: port lost";
        case LinkStatus::Kind::Off: break;
    }
    return "Interface: off";
}

std::string Link::TimeStamp() const {
    const DateTime now = clock_.Now();
    char time[40];
    std::snprintf(time, sizeof time, "%02d:%02d:%02d", now.hour, now.minute, now.second);
    return DateText(now, hardware_.DateFormat) + ", " + time;
}

bool Link::OpenPort() {
    if (!commPort_.fncInitializeComPort(commPort_.BitRate, commPort_.PortNumber)) return false;
    commPort_.SetPortTimeouts(commPort_.BitRate);
    return true;
}

void Link::StartLink() {
    if (hardware_.InterfaceKind != 2) return;
    ++cycle_;
    EndWait();
    TransferBusy = false;
    reading_.Reading.fill(0);
    hasData_ = false;
    inTime_ = 0;
    commPort_.Load();
    host_.EnableInterval(true);
    polling_ = true;
    lastGood_ = clock_.SteadySeconds();
    commPort_.SetWindow(PortDialog::Window::Minimised);
    commPort_.LoadPortSettings();
    commPort_.PortOpened = commPort_.fncInitializeComPort(commPort_.BitRate, commPort_.PortNumber);
    commPort_.SetBitRateComboBox();
    commPort_.SetPortComboBox();
    commPort_.SetPortTimeouts(commPort_.BitRate);
    commPort_.SetWindow(commPort_.PortValid ? PortDialog::Window::Hidden : PortDialog::Window::Normal);
}

bool Link::StartReady() {
    StartLink();
    if (commPort_.PortOpened) return true;
    if (commPort_.PortValid) StopLink();
    return false;
}

void Link::StopLink() {
    ++cycle_;
    EndWait();
    TransferBusy = false;
    polling_ = false;
    host_.EnableInterval(false);
    if (device_.PortOpen()) device_.SetPortOpen(false);
    // Nothing has been read from the store while the dialog is not loaded, so there is nothing to keep.
    if (!commPort_.Loaded()) return;
    commPort_.SavePortSettings();
    commPort_.Unload();
}

void Link::IntervalTick() {
    if (!polling_ || TransferBusy) return;
    if (!device_.PortOpen() && !OpenPort()) return;
    SendRequest("2");
    RunTransfer();
}

void Link::SendRequest(const std::string& form) {
    ComposeRequest(form, request_);
    ++counts_.requests;
    device_.Output(request_);
}

void Link::RunTransfer() {
    TransferBusy = true;
    commPort_.SetStatus({});
    device_.DiscardInput();
    AwaitFrame();
}

void Link::AwaitFrame() {
    host_.EnableTimeout(true);
    TimedOut = false;
    device_.Set(PortProperty::InputLen, static_cast<int>(FrameBytes));
    waiting_ = true;
}

void Link::EndWait() {
    waiting_ = false;
    host_.EnableTimeout(false);
}

void Link::TimeoutTick() {
    if (!waiting_) return;
    TimedOut = true;
    ++counts_.timedOut;
    EndWait();
    // Neither of the two texts that tell a silent interface from an unfinished answer is ever shown: the last
    // values stand, and the link light tells.
    TimedOut = false;
    FinishTransfer();
}

void Link::PortLost() {
    ++counts_.lost;
    inTime_ = 0;
    if (!waiting_) return;
    EndWait();
    FinishTransfer();
}

void Link::BytesArrived() {
    if (!waiting_) {
        ReceiveEvent();
        return;
    }
    if (device_.InBufferCount() < static_cast<int>(FrameBytes)) return;
    EndWait();
    TakeFrame();
}

void Link::TakeFrame() {
    FrameBuffer = device_.Input();
    if (FrameBuffer.size() == FrameBytes && EndsFrame(FrameBuffer.back())) {
        DecodeFrame(std::span<const std::uint8_t, FrameBytes>(FrameBuffer), reading_.Reading);
        ++counts_.good;
        const double now = clock_.SteadySeconds();
        const bool late = hasData_ && now - lastGood_ > LiveSeconds;
        inTime_ = late ? 0 : inTime_ + 1;
        hasData_ = true;
        lastGood_ = now;
        if (FrameTaken) FrameTaken();
    } else {
        ++counts_.unfinished;
        const unsigned cycle = cycle_;
        // "Kelvo" is the title of a box that is given none.
        prompts_.Message("Data transmission uncompleted: " + TimeStamp(), "Kelvo");
        if (cycle != cycle_) return;
    }
    FinishTransfer();
}

void Link::FinishTransfer() {
    LastTransferTime = TimeStamp();
    if (commPort_.Dialog.txtStatus.empty()) commPort_.SetStatus("Data transfer completed: " + LastTransferTime);
    TransferBusy = false;
}

void Link::ReceiveEvent() {
    const int threshold = device_.Get(PortProperty::RThreshold);
    if (TransferBusy || threshold == 0 || device_.InBufferCount() < threshold) return;
    device_.Set(PortProperty::RThreshold, 0);
    FrameBuffer = device_.Input();
    if (FrameBuffer.size() >= FrameBytes)
        DecodeFrame(std::span<const std::uint8_t>(FrameBuffer).first<FrameBytes>(), reading_.Reading);
    device_.Set(PortProperty::RThreshold, static_cast<int>(FrameBytes));
}

LinkStatus Link::Status() const {
    if (!polling_) return {};
    const double age = clock_.SteadySeconds() - lastGood_;
    const int seconds = static_cast<int>(age);
    if (!device_.PortOpen()) return {LinkStatus::Kind::Lost, seconds};
    if (!hasData_) return {LinkStatus::Kind::Waiting, seconds};
    if (age <= LiveSeconds) return {LinkStatus::Kind::Live, seconds};
    if (age <= LateSeconds) return {LinkStatus::Kind::Late, seconds};
    return {LinkStatus::Kind::Silent, seconds};
}

FrameMark Link::LatestFrame() const {
    if (!hasData_) return {};
    const double age = clock_.SteadySeconds() - lastGood_;
    const bool broken = age > LiveSeconds || !device_.PortOpen();
    return {counts_.good, broken ? 0 : inTime_, age};
}

}  // namespace kelvo
