#pragma once

#include "core/AppState.h"
#include "core/Doors.h"

namespace kelvo {

class Desk;
class Link;
class Printing;
class TableScreenLogic;

/// What main() builds and hands to every screen: the state, the doors, the desk, the one data table, the link.
struct House {
    AppState& state;
    Prompts& prompts;
    FileChooser& files;
    Clock& clock;
    Desk& desk;
    TableScreenLogic& table;
    Printing* printing = nullptr;  ///< null where nothing can be printed
    Link* link = nullptr;          ///< null where no interface can be reached
};

}  // namespace kelvo
