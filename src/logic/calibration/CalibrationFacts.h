#pragma once

#include <string>
#include <string_view>

namespace kelvo {

struct IseCalibration;

// The file of facts (`core/FactsFile`) beside a calibration, "AUG.ISE.rows". Row 0 is the calibration, row i its i-th
// standard; the check of each is that of the whole ".ISE" file.

/// The whole file; empty when nothing is known beyond the calibration's own file.
/// @param name  of the calibration's file
/// @param file  its bytes, as they are written
std::string CalibrationFactsBytes(const IseCalibration& calibration, const std::string& name, std::string_view file);
/// Takes up what the file knows of a calibration that has just been read: standards that do not count, what is told of
/// them. Facts of other bytes are not taken.
/// @param file  bytes that the calibration was read from
/// @return what is to be told of it, else empty
std::string TakeCalibrationFacts(IseCalibration& calibration, std::string_view facts, std::string_view file);

/// Writes it beside a calibration that has just been written. @return why not, a sentence, else empty
std::string WriteCalibrationFacts(IseCalibration& calibration, const std::string& path, std::string_view file);
/// Reads it beside a calibration that has just been read. @return what is to be told of it, else empty
std::string ReadCalibrationFacts(IseCalibration& calibration, const std::string& path, std::string_view file);
/// Writes what has changed of it beside the file that the calibration is in, unless one of the two has been changed
/// elsewhere.
/// @return why not, a sentence, else empty; a calibration without a file has nothing written
std::string AmendCalibrationFacts(IseCalibration& calibration);

}  // namespace kelvo
