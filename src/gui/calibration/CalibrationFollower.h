#pragma once

namespace kelvo {

/// A window that stands beside the calibration screen and shows something of the calibration in use.
class CalibrationFollower {
 public:
    virtual ~CalibrationFollower() = default;
    /// The calibration screen shows something new.
    virtual void CalibrationChanged() = 0;
};

}  // namespace kelvo
