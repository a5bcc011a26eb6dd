#pragma once

#include <string>

#include "batch/Arguments.h"
#include "batch/Report.h"
#include "core/FileKinds.h"

namespace kelvo {

/// What a file of Kelvo holds, by the program's own readers. Texts and numbers are those of the screens.
/// @param arguments  with `--settings` and `--weight`, which a calibration and the limits of an uncertainty go by
/// @throws Failure (File) for a file that cannot be read or is not what its ending says
Report ReadFileReport(const std::string& file, const FileKindRow& kind, const Arguments& arguments);

/// The kind of a file. @throws Failure (File) for an ending that none of Kelvo's files has
const FileKindRow& KindOfFile(const std::string& file);

}  // namespace kelvo
