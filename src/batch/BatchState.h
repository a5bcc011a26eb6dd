#pragma once

#include "calibration/CalibrationState.h"
#include "core/Geometry.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "ph/PhCalibration.h"

namespace kelvo {

/// The groups of the state that the commands work with. There is no screen to go to and no recording to set up.
struct BatchState : CalibrationState,
                    Paths,
                    Geometry,
                    Navigation,
                    HardwareSettings,
                    ReadingSettings,
                    PhCalibration,
                    TableState,
                    StatusMessages {};

}  // namespace kelvo
