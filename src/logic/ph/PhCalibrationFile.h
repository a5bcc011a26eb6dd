#pragma once

#include <string>
#include <string_view>

#include "core/SaveAndOpen.h"
#include "core/StateOf.h"

namespace kelvo {

class FileChooser;
class Prompts;

// Files of the pH electrodes' calibrations, ".CLI". One value a line, no header and no version; the reader trusts the
// order, but not the counts.

/// The ".CLI" file of both pH electrodes, bytes of the code page with CR LF.
/// @throws RuntimeError 5 when a text does not fit the code page.
std::string PhBytes(const PhCalibration& phCalibration);

/// Takes both electrodes' calibrations from the bytes of a ".CLI" file. A table with a count of 0 is left alone.
/// @throws RuntimeError 62, 6, or 9 for a count outside 0..4; the calibration in use is then untouched.
void ReadPh(StateOf<PhCalibration, StoredWithCalibration> state, std::string_view bytes);

/// Asks for a name, writes the file and notes it in the settings as the last one.
/// @return false when cancelled or not written. A failed write shows no box; `StatusMessage` says it.
bool SavePhCalibration(StateOf<const Paths, const PhCalibration, StatusMessages> state, Prompts& prompts,
                       FileChooser& chooser);

/// Opens a pH calibration; asks for the file when the name is empty.
OpenOutcome OpenPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                              FileChooser& chooser, std::string fileName);

/// Name of the pH calibration to load: the file of "LastCaliFile" when it exists, under the name it has, else AppPath
/// followed by the value of "DefaultFile".
std::string ResolvePhCalibration(const std::string& iniPath, const std::string& appPath);

/// Opens the pH calibration saved last, or else the default one.
OpenOutcome LoadLastPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                                  FileChooser& chooser);

}  // namespace kelvo
