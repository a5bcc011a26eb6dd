#pragma once

#include <string>

#include "text/RuntimeError.h"

namespace kelvo {

class Prompts;

// Fixed texts and questions that more than one module shows, each of them here alone.

/// "Data out of range, please try again.": a run-time failure in a step that has no message of its own.
extern const char* const DataOutOfRange;
extern const char* const PrinterNotReady;
/// The sample is warmer or colder than the calibration; an exclamation mark stands beside it.
extern const char* const TemperatureDiffers;
namespace text {
extern const char* const SensorNotWorking;
}

/// Whether the file may be written: it does not exist, or replacing it was answered with Yes (No is the default).
bool MayReplace(Prompts& prompts, const std::string& name);

/// "Error61Saving/home/a/RUN.TAB:Disk full." with an exclamation mark.
void ShowFileError(Prompts& prompts, const RuntimeError& error, const char* verb, const std::string& name);

}  // namespace kelvo
