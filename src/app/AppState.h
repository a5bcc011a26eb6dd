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
#include "ph/RecordingChoices.h"

namespace kelvo {

/// The one working state of the process, a group of fields for each subject: whoever needs some of them takes these
/// groups (`StateOf`). There is no global instance; RunProgram makes one and hands it on, a test makes a fresh one.
struct AppState : Paths,
                  Geometry,
                  Navigation,
                  CalibrationState,
                  PhCalibration,
                  PhEntry,
                  RecordingChoices,
                  TableState,
                  HardwareSettings,
                  ReadingSettings,
                  StatusMessages {};

}  // namespace kelvo
