#pragma once

#include <string>

#include "ph/RecordingRun.h"

namespace kelvo {

/// What the graph of a recording shows, in words for someone who hears the screen: "3 of 101 points. Electrode 1:
/// lowest 6.98, highest 7.05, last 7.02 pH. 1 point is not fresh."
std::string RecordingWords(const RecordingRun& run);

}  // namespace kelvo
