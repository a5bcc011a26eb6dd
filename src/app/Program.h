#pragma once

namespace kelvo {

/// Builds the pieces, hands them to each other, opens the first screen and runs until the analyst leaves.
/// @return 0 after an exit that was asked for, 1 after a failure that nothing caught, which has then been reported
int RunProgram(int argc, char** argv);

}  // namespace kelvo
