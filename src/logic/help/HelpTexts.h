#pragma once

#include <vector>

namespace kelvo {

/// One line of a sheet's advice. An empty one parts two paragraphs.
struct HelpLine {
    const char* text;
    bool heading = false;
};

/// The lines of a topic, 0 calibration ... 7 pH, in its step: 1 or 2 of the ISE path for topic 0, 1 to 4 of the pH path
/// for topic 7. Topic 0 without a step shows the lines of step 1; topic 7 without one has none, and no topic beyond 7
/// has any. Lines 0 to 10 go on the first sheet, the rest on the second where the topic has one.
const std::vector<HelpLine>& HelpLines(int topic, int step);

}  // namespace kelvo
