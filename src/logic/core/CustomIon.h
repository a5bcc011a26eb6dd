#pragma once

#include <string>

#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// Takes the name and molar mass of the user's own ion as they were typed. A failed test shows its message.
/// @param weight text read by `Val`; 0 is refused, a negative mass passes
/// @return whether `CustomIon` and `CustomWeight` were set
bool TakeCustomIon(IonSettings& ion, Prompts& prompts, const std::string& name, const std::string& weight);

/// Puts `CustomIon` and `CustomWeight` in row 25 of the ion tables; an empty name becomes "Custom", a weight of 0
/// becomes 100.
void StoreCustomIon(IonSettings& ion);

}  // namespace kelvo
