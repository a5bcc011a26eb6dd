#pragma once

#include <QSerialPort>
#include <array>

#include "link/PortDevice.h"
#include "link/PortNames.h"

namespace kelvo {

/// The serial port of the machine behind `PortDevice`. Received bytes and a lost device come as signals; nothing
/// here waits. A device that another program holds opens as PortAlreadyOpen, one without permission as PortAbsent
/// with an advice.
class SerialPortQt : public QObject, public PortDevice {
    Q_OBJECT
 public:
    explicit SerialPortQt(PortNames names, QObject* parent = nullptr);

    int CommPort() const override { return number_; }
    int SetCommPort(int number) override;
    int SetSettings(const std::string& settings) override;
    int Set(PortProperty property, int value) override;
    int Get(PortProperty property) const override { return properties_[static_cast<std::size_t>(property)]; }
    bool PortOpen() const override { return port_.isOpen() && !lost_; }
    int SetPortOpen(bool open) override;
    std::string Advice() const override { return advice_; }
    int InBufferCount() const override;
    void DiscardInput() override;
    std::vector<std::uint8_t> Input() override;
    int Output(std::span<const std::uint8_t> bytes) override;
    std::intptr_t CommID() const override;
    CommTimeouts GetCommTimeouts() const override { return timeouts_; }
    /// Kept and given back; waiting is the link's, by events, so no call ever blocks for them.
    void SetCommTimeouts(const CommTimeouts& timeouts) override { timeouts_ = timeouts; }

 signals:
    void BytesArrived();
    void Lost();

 private:
    int Open();
    void OnError(QSerialPort::SerialPortError error);
    void Lose();
    void Drop();
    /// The user's link of this number has come to point to another device than the one that is open.
    bool PinElsewhere() const;

    PortNames names_;
    QSerialPort port_;
    std::array<int, 8> properties_{};
    CommTimeouts timeouts_;
    std::string advice_, device_;
    int number_ = 0;
    int rate_ = 9600;
    bool opening_ = false, lost_ = false;
};

}  // namespace kelvo
