#pragma once

#include <string>
#include <string_view>

#include "core/SaveAndOpen.h"
#include "core/StateOf.h"

namespace kelvo {

class Clock;
class FileChooser;
class Prompts;
enum class SaveOutcome;
struct DateTime;

// Files of the ion-selective electrode's calibration, ".ISE". One value a line, no header and no version; the reader
// trusts the order, but not the counts and indices.

constexpr int MaxCaliPoints = 10;

/// The ".ISE" file of the present calibration, bytes of the code page with CR LF.
/// @param now date and time of saving
/// @throws RuntimeError 5 when a text does not fit the code page.
std::string IseBytes(StateOf<const CalibrationState, const HardwareSettings> state, const DateTime& now);

/// Fills the calibration from the bytes of an ".ISE" file in the order of the file. The four arrays are sized
/// together before the first point is read, so that they agree with `CaliPoints` wherever the reading stops.
/// @throws RuntimeError at the first fault, the fields before it stand as read: 62 short, 6 a number out of its
/// width, 9 a scale, ion or point count (1..10) that Kelvo does not have.
void ReadIse(CalibrationState& state, std::string_view bytes);

/// The whole save flow: name (asked for when empty), extension, question about an existing file, writing, then the
/// memory of the ion (`IonCali`) and the `File...` fields. `CaliDirty` is the caller's to clear.
/// Unless it is `Saved`, nothing is changed; a failure has been shown.
SaveOutcome SaveIseCalibration(StateOf<CalibrationState, const Paths, const HardwareSettings, StatusMessages> state,
                               Prompts& prompts, FileChooser& chooser, const Clock& clock, std::string fileName);

/// Asks for a file and reads it; no drawing. Whatever is not `Opened` has `CaliPoints` 0 and `IonIndex` as before.
/// `Cancelled`: `FileElectrodeNum`[0] and `FileRefElectrode` are the current settings. `Failed`, after its message:
/// the arrays stand as far as they were read; slope, scales and `File...` fields are as before, so that no slope
/// meets the temperature of another file. `Missing`: after its message, nothing is changed.
OpenOutcome OpenIseCalibration(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                               FileChooser& chooser);

/// `OpenIseCalibration` until the ion of the file agrees with the ion set before (any ion when none was set) or
/// the analyst cancels, then the one warning about serial numbers that differ. A rejected file leaves only its
/// arrays, with `CaliPoints` 0.
OpenOutcome OpenIseChecked(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                           FileChooser& chooser);

}  // namespace kelvo
