#pragma once

#include <istream>
#include <ostream>
#include <span>
#include <string>

namespace kelvo {

/// How a run of kelvo-batch ends. The man page and `--help` have the same table.
enum class ExitCode : int {
    Done = 0,
    RowsRefused = 1,  ///< rows of the input have no result; the others were worked out
    Usage = 2,        ///< the command line is not taken; nothing was done
    File = 3,         ///< a file could not be read or written; the others were done
    NoResult = 4,     ///< the data have no result: no line through the points, a value that a calculator refuses
};

/// The command-line tool without its process: `arguments` are the words behind the program's name. Results go to
/// `out`, all that is told goes to `err`. Neither knows a locale: the decimal mark is a point.
/// @return an `ExitCode`
int RunBatch(std::span<const std::string> arguments, std::istream& in, std::ostream& out, std::ostream& err);

}  // namespace kelvo
