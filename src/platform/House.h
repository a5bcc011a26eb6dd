#pragma once

#include "core/AppState.h"
#include "core/Doors.h"

namespace kelvo {

class Desk;

/// What main() builds and hands to every screen: the state, the doors, the desk.
struct House {
    AppState& state;
    Prompts& prompts;
    FileChooser& files;
    Clock& clock;
    Desk& desk;
};

}  // namespace kelvo
