#pragma once

#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// Asks how many readings are averaged and sets `ReadAvg`. An empty or zero answer means 1, a cancelled one changes
/// nothing, a negative one or one that no whole number of 16 bits holds is refused with the range message.
/// @return whether `ReadAvg` was set and the reading buffers are to be made anew
bool AskAverage(ReadingSettings& reading, Prompts& prompts);

}  // namespace kelvo
