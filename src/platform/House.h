#pragma once

#include "core/AppState.h"
#include "core/Doors.h"

namespace kelvo {

class Desk;
class TableScreenLogic;

/// What main() builds and hands to every screen: the state, the doors, the desk, and the one data table.
struct House {
    AppState& state;
    Prompts& prompts;
    FileChooser& files;
    Clock& clock;
    Desk& desk;
    TableScreenLogic& table;
};

}  // namespace kelvo
