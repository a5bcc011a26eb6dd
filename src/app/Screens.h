#pragma once

#include "platform/House.h"

namespace kelvo {

/// Tells the desk every screen that this program has. A route whose screen is missing here is switched off.
void RegisterScreens(House& house);

}  // namespace kelvo
