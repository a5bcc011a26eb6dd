#pragma once

#include "core/StateOf.h"
#include "core/UnsavedWork.h"

namespace kelvo {

class Clock;
class FileChooser;
class Prompts;

class ScreenManager;
class Link;
class Printing;
class TablePresenter;

/// All groups of the state: a screen hands on those that a presenter needs.
using WholeState = StateOf<Paths, Geometry, Navigation, CalibrationState, IonSettings, IseCalibration, GraphState,
                           EntryState, StoredWithCalibration, PhCalibration, PhEntry, RecordingChoices, TableState,
                           HardwareSettings, ReadingSettings, StatusMessages>;

/// What main() builds and hands to every screen: the state, the dialogs, the screens, the one data table, the link.
struct AppContext {
    WholeState state;
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
