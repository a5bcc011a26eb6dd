#pragma once

#include "kit/AppContext.h"

namespace kelvo {

/// Tells the screen manager every screen that this program has. A route whose screen is missing here is switched off.
void RegisterScreens(AppContext& context);

}  // namespace kelvo
