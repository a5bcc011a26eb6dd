#pragma once

#include <istream>
#include <string>

#include "batch/Arguments.h"
#include "batch/Report.h"
#include "core/FileKinds.h"

namespace kelvo {

/// What a file of Kelvo holds, by the program's own readers. Texts and numbers are those of the screens.
/// @param arguments  with `--settings` and `--weight`, which a calibration and the limits of an uncertainty go by
/// @throws Failure (File) for a file that cannot be read or is not what its ending says
/// @param in  what "-" stands for
Report ReadFileReport(const std::string& file, const FileKindRow& kind, const Arguments& arguments, std::istream& in);

/// What has no ending of its own, standard input or a pipe of the shell, is read as a file of this one.
constexpr Option AsOption = {"--as", "ENDING", "read \"-\" or a pipe as a file of this ending (ISE, TAB ...)"};

/// The kind of a file. @throws Failure (File) for an ending that none of Kelvo's files has, (Usage) for a file without
/// a name when `AsOption` does not tell it
const FileKindRow& KindOfFile(const std::string& file, const Arguments& arguments);

}  // namespace kelvo
