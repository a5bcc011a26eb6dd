#pragma once

#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// Charge of the ion of row 25 as it stands in the settings (section `QualitySection`) for an ion of this name; 0 when
/// it was never given.
int CustomCharge(StateOf<const Paths, const IonSettings> state);

/// Asks for it until a whole number from −4 to 4 other than 0 is given or the analyst cancels, and keeps it in the
/// settings. "2", "+2" and "2+" are one.
/// @param known  offered as the answer, 0 none
/// @return the charge, also when the settings file cannot be written; 0 when cancelled
int AskCustomCharge(StateOf<const Paths, const IonSettings> state, Prompts& prompts, int known);

}  // namespace kelvo
