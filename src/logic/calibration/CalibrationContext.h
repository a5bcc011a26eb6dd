#pragma once

#include "calibration/CalibrationState.h"
#include "calibration/IseCalibration.h"
#include "core/LinkSwitch.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/ScreenNavigator.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "core/WorkingTable.h"

namespace kelvo {

class Clock;
class FileChooser;
class Prompts;

struct Calibration;

/// The groups of the state that the calibration screens work on.
struct CalibrationGroups {
    using Whole = StateOf<CalibrationState, const Paths, Navigation, TableState, const HardwareSettings,
                          ReadingSettings, StatusMessages>;

    // NOLINTNEXTLINE(google-explicit-constructor): made from the whole state
    CalibrationGroups(Whole groups)
        : whole(groups),
          state(groups),
          paths(groups),
          navigation(groups),
          tableState(groups),
          reading(groups),
          status(groups) {}

    Whole whole;  ///< to be handed on
    CalibrationState& state;
    const Paths& paths;
    Navigation& navigation;
    TableState& tableState;
    ReadingSettings& reading;
    StatusMessages& status;
};

/// What the presenters of the calibration screens work with.
struct CalibrationContext : CalibrationGroups {
    Prompts& prompts;
    FileChooser& files;
    const Clock& clock;
    ScreenNavigator& screens;
    WorkingTable& table;
    LinkSwitch* link = nullptr;  ///< null where no interface can be reached
};

/// Keeps `CaliDirty` over a step of the table: its closing takes the flag for its own mark and clears it, while on the
/// calibration screen it says that a calibration is not saved.
class KeptDirty {
 public:
    explicit KeptDirty(IseCalibration& calibration) : calibration_(calibration), dirty_(calibration.CaliDirty) {}
    KeptDirty(const KeptDirty&) = delete;
    KeptDirty& operator=(const KeptDirty&) = delete;
    ~KeptDirty() { calibration_.CaliDirty = dirty_; }

 private:
    IseCalibration& calibration_;
    std::int16_t dirty_;
};

/// What they ask of the calibration screen's window.
class CalibrationView {
 public:
    virtual ~CalibrationView() = default;
    /// Shows everything as the presenters now hold it.
    virtual void ShowAll() = 0;
    /// Shows the sample boxes alone: they change with every tick of a reading.
    virtual void ShowSamples() = 0;
    /// Sets the status line: what lasts for the calibration in use, then a message on the last step.
    virtual void ShowStatusLines(const std::string& lasting, const std::string& message) = 0;
    /// Puts the reading dialog clear of the list and of most of the graph.
    virtual void PlaceReadingDialog() = 0;
};

/// What the status line says for as long as the calibration is in use: points paired across, a fit that was refused, a
/// calibration that is doubtful, a temperature that is not the working one. Empty when there is nothing.
std::string LastingStatus(const CalibrationState& state, const Calibration& calibration);
/// The same on the screen, which has a graph: with the standards that it does not show.
std::string ScreenStatus(const CalibrationState& state, const Calibration& calibration);

}  // namespace kelvo
