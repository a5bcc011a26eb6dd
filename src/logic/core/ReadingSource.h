#pragma once

#include <string>

namespace kelvo {

/// Live values on their way into a dialog: the rolling average of the frames and the wait for a stable reading.
/// `LiveReading` of the link is one.
class ReadingSource {
 public:
    enum class Verdict { NotWaiting, Waiting, Stable };

    virtual ~ReadingSource() = default;
    /// The dialog opens: windows are empty, no wait runs.
    virtual void Open() = 0;
    /// Takes the latest frame; false when none has come since the link was started.
    virtual bool Take() = 0;
    /// The tick is done.
    virtual void Count() = 0;
    /// Averaged potential of electrode 1, "#0.00".
    virtual std::string MvText() const = 0;
    /// Averaged °C of sensor 1; below 0: not connected.
    virtual float Celsius() const = 0;
    /// The wait begins.
    virtual void StartWait() = 0;
    /// Once a tick, with the value as displayed.
    virtual Verdict Judge(const std::string& displayed) = 0;
    /// Line on the seconds left of a pre-set time, else empty.
    virtual std::string CountDown() const = 0;
    /// `ReadAvg` has been set anew; the stability settings have been accepted anew.
    virtual void ResizeAverage() = 0;
    virtual void SettingsAccepted() = 0;
};

}  // namespace kelvo
