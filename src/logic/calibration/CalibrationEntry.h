#pragma once

#include <functional>

#include "calibration/CaliSetup.h"
#include "calibration/CalibrationContext.h"

namespace kelvo {

/// The entry of a new calibration's points, from "Ok" of the setup to the calibration screen: the point dialog once
/// for each point, the slope dialog when there is one point alone.
class CalibrationEntry {
 public:
    /// @param startLink starts the link for points that are read, its port dialog in front when the port is not usable
    CalibrationEntry(const CalibrationContext& context, CaliSetup& setup, std::function<void()> startLink)
        : context_(context), setup_(setup), startLink_(std::move(startLink)) {}

    /// "Ok": checks the choices and runs the entry to its end.
    /// @return false when a choice is missing (`CaliSetup::missing`) and the dialog stays
    bool Ok();
    /// "Cancel" of the setup dialog.
    void Cancel();

 private:
    void EnterPoints();
    void Finish();
    /// A screen that the setup was asked for by, continuous recording for one, gives way.
    void CloseReturnScreen();

    CalibrationContext context_;
    CaliSetup& setup_;
    std::function<void()> startLink_;
};

}  // namespace kelvo
