#pragma once

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/UnsavedWork.h"

namespace kelvo {

class ScreenManager;
class Link;
class Printing;
class TablePresenter;

/// What main() builds and hands to every screen: the state, the dialogs, the screens, the one data table, the link.
struct AppContext {
    AppState& state;
    Prompts& prompts;
    FileChooser& files;
    Clock& clock;
    ScreenManager& screens;
    TablePresenter& table;
    Printing* printing = nullptr;  ///< null where nothing can be printed
    Link* link = nullptr;          ///< null where no interface can be reached
    UnsavedWork unsaved{};         ///< whoever holds unsaved work is on this list
};

}  // namespace kelvo
