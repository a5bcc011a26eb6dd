#pragma once

namespace kelvo {

/// The link to the measuring interface, for those who only start and stop it.
class LinkSwitch {
 public:
    virtual ~LinkSwitch() = default;
    /// Started while it runs it begins afresh: what the last start has brought counts no more.
    virtual void StartLink() = 0;
    /// Safe at any moment, and when nothing runs.
    virtual void StopLink() = 0;
    /// Whether there is a link to stop.
    virtual bool PortOpen() const = 0;
};

}  // namespace kelvo
