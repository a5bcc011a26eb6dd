#pragma once

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/LinkSwitch.h"
#include "core/ScreenNavigator.h"
#include "core/WorkingTable.h"

namespace kelvo {

/// What the presenters of the calibration screens work with.
struct CalibrationContext {
    AppState& state;
    Prompts& prompts;
    FileChooser& files;
    const Clock& clock;
    ScreenNavigator& screens;
    WorkingTable& table;
    LinkSwitch* link = nullptr;  ///< null where no interface can be reached
};

/// What they ask of the calibration screen's window.
class CalibrationView {
 public:
    virtual ~CalibrationView() = default;
    /// Shows everything as the presenters now hold it.
    virtual void ShowAll() = 0;
    /// Shows the sample boxes alone: they change with every tick of a reading.
    virtual void ShowSamples() = 0;
    /// Sets the status line.
    virtual void ShowStatus(const std::string& text) = 0;
    /// Puts the reading dialog clear of the list and of most of the graph.
    virtual void PlaceReadingDialog() = 0;
};

/// Text of the calibration screen's status line: what lasts for the calibration in use, then a remark on the last
/// step.
std::string CalibrationStatus(const AppState& state, const std::string& remark = {});

}  // namespace kelvo
