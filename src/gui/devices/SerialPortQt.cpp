#include "devices/SerialPortQt.h"

#include <unistd.h>

#include <cerrno>

namespace kelvo {

SerialPortQt::SerialPortQt(PortNames names, QObject* parent) : QObject(parent), names_(std::move(names)) {
    connect(&port_, &QSerialPort::readyRead, this, &SerialPortQt::BytesArrived);
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialPortQt::OnError);
}

int SerialPortQt::SetCommPort(int number) {
    if (lost_) Drop();
    if (port_.isOpen()) return PortStillOpen;
    number_ = number;
    return PortNoError;
}

int SerialPortQt::SetSettings(const std::string& settings) {
    const auto comma = settings.find(',');
    bool isNumber = false;
    const int rate = QByteArray::fromStdString(settings.substr(0, comma)).toInt(&isNumber);
    if (comma == std::string::npos || settings.substr(comma) != ",N,8,1" || !isNumber || rate < 1)
        return PortBadProperty;
    if (port_.isOpen() && !port_.setBaudRate(rate)) return PortBadProperty;
    rate_ = rate;
    return PortNoError;
}

int SerialPortQt::Set(PortProperty property, int value) {
    if (value < 0) return PortBadProperty;
    properties_[static_cast<std::size_t>(property)] = value;
    // The buffer of one frame also bounds what a babbling device can pile up here.
    if (property == PortProperty::InBufferSize) port_.setReadBufferSize(value);
    return PortNoError;
}

int SerialPortQt::SetPortOpen(bool open) {
    if (!open) {
        port_.close();
        lost_ = false;
        return PortNoError;
    }
    if (port_.isOpen()) return PortAlreadyOpen;
    opening_ = true;
    const int code = Open();
    opening_ = false;
    return code;
}

int SerialPortQt::Open() {
    advice_.clear();
    const std::string device = names_.DeviceOf(number_);
    if (device.empty() || access(device.c_str(), F_OK) != 0) return PortAbsent;
    if (access(device.c_str(), R_OK | W_OK) != 0) {
        if (errno == EACCES) advice_ = PermissionAdvice(device);
        return PortAbsent;
    }
    device_ = device;
    port_.setPortName(QString::fromStdString(device));
    port_.setBaudRate(rate_);
    if (port_.open(QIODevice::ReadWrite)) {
        DiscardInput();
        return PortNoError;
    }
    // Permission has been looked at before; what is refused now is held by somebody.
    return port_.error() == QSerialPort::PermissionError ? PortAlreadyOpen : PortAbsent;
}

void SerialPortQt::OnError(QSerialPort::SerialPortError error) {
    if (opening_ || lost_ || error == QSerialPort::NoError || !port_.isOpen()) return;
    if (error == QSerialPort::UnsupportedOperationError || error == QSerialPort::TimeoutError) return;
    Lose();
}

void SerialPortQt::Lose() {
    lost_ = true;
    // The port is in the middle of a read or a write of its own; it is closed when that has returned.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (lost_) Drop();
        },
        Qt::QueuedConnection);
}

void SerialPortQt::Drop() {
    port_.close();
    lost_ = false;
    emit Lost();
}

int SerialPortQt::InBufferCount() const {
    return PortOpen() ? static_cast<int>(port_.bytesAvailable()) : 0;
}

void SerialPortQt::DiscardInput() {
    if (!PortOpen()) return;
    port_.clear(QSerialPort::Input);
    // A full buffer stops the port's reading; only a read from the emptied buffer sets it going again.
    char nothing = 0;
    port_.read(&nothing, 1);
}

std::vector<std::uint8_t> SerialPortQt::Input() {
    if (!PortOpen()) return {};
    const int length = Get(PortProperty::InputLen);
    const QByteArray bytes = length > 0 ? port_.read(length) : port_.readAll();
    return {bytes.begin(), bytes.end()};
}

bool SerialPortQt::PinElsewhere() const {
    return names_.Pinned(number_) && names_.DeviceOf(number_) != device_;
}

int SerialPortQt::Output(std::span<const std::uint8_t> bytes) {
    if (!PortOpen()) return PortNotOpen;
    if (PinElsewhere()) {
        Lose();
        return PortNotOpen;
    }
    // A line that takes nothing must not let requests pile up.
    const auto room = Get(PortProperty::OutBufferSize) - static_cast<qint64>(bytes.size());
    if (port_.bytesToWrite() > room) port_.clear(QSerialPort::Output);
    const auto written = port_.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    return written < 0 ? PortNotOpen : PortNoError;
}

std::intptr_t SerialPortQt::CommID() const {
    return PortOpen() ? port_.handle() : -1;
}

}  // namespace kelvo
