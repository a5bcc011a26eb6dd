#pragma once

namespace kelvo {

/// Answers `--help` and its like without a display. Otherwise builds the pieces, hands them to each other, opens the
/// first screen, or that of the file it was started with, and runs until the analyst leaves.
/// @return 0 after an exit that was asked for, 1 after a failure that nothing caught, which has then been reported, 2
/// for a command line that is not taken
int RunProgram(int argc, char** argv);

}  // namespace kelvo
