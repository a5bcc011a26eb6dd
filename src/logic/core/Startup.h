#pragma once

#include <string>

#include "core/StateOf.h"

namespace kelvo {

/// Display size in twips (15 a pixel of a 640 × 480 display).
struct DisplaySize {
    int width = 0, height = 0;
};

/// The steps of start-up that need no screen, in their order: geometry, work arrays, fixed facts of the
/// interface, the constant tables, paths, settings of section "Hareware", the custom ion, the copies for
/// reports, channels and what follows from them. The groups it takes begin anew, whatever they held. The caller then
/// shows `frmNorvak`.
/// @param programFolder the folder of the program's files; one '/' is added when it does not end with one
void LoadState(
    StateOf<Paths, Geometry, Navigation, IonSettings, HardwareSettings, StoredWithCalibration, ReadingSettings> state,
    const DisplaySize& display, const std::string& programFolder);

/// `InputActive` and `ActiveCount` from `Channel`: input 0 is on for either electrode of channel 1, inputs 1 to
/// 3 for channels 2 to 4.
void DeriveInputs(HardwareSettings& hardware);

}  // namespace kelvo
