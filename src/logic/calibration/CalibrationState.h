#pragma once

#include "calibration/EntryState.h"
#include "calibration/GraphState.h"
#include "calibration/IseCalibration.h"
#include "core/IonSettings.h"
#include "core/StoredWithCalibration.h"

namespace kelvo {

/// All that the ISE calibration works on.
struct CalibrationState : IonSettings, IseCalibration, GraphState, EntryState, StoredWithCalibration {};

}  // namespace kelvo
