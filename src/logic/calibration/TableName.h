#pragma once

#include "core/AppState.h"
#include "core/Dialogs.h"

namespace kelvo {

/// The question that comes before the first sample of a table: "Would you like to save your data in a file while you
/// are measuring". Yes asks for a name and sets `TableFile` to it (upper case, ".TAB" added when it has no "."); while
/// the file exists, replacing it is asked for, and a No asks for another name. No sets `TableFile` to "-999".
/// @return false when the file chooser was cancelled; `TableFile` stays empty
bool AskTableFile(AppState& state, Prompts& prompts, FileChooser& files);

/// A name for rows that close without a question: "KEPT.TAB" in the folder, or the first "KEPT2.TAB", "KEPT3.TAB" ...
/// that no file has.
std::string NameToKeep(const std::string& folder);

}  // namespace kelvo
