#pragma once

#include "kit/AppContext.h"
#include "kit/Screen.h"

namespace kelvo {

/// "Print", "Data Table" of a working screen: what "the table" means there, under the busy cursor and with progress;
/// its status line tells where a file went.
void PrintTableOf(AppContext& context, Screen& screen);

}  // namespace kelvo
