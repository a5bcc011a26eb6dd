#include "calibration/TableName.h"
#include "core/Messages.h"

#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// A name as Kelvo keeps it, empty when the chooser was cancelled.
std::string ChosenName(AppState& state, FileChooser& files) {
    const auto chosen = files.Save({"All Data(*.Tab)|*.Tab", state.DataPath, "*.TAB"});
    if (!chosen || chosen->empty()) return {};
    std::string name = UpperName(*chosen);
    if (LastPart(name).find('.') == std::string::npos) name += ".TAB";
    return name;
}

}  // namespace

std::string NameToKeep(const std::string& folder) {
    std::string name = folder + "KEPT.TAB";
    for (int i = 2; FileExists(name); ++i)
        name = folder + "KEPT" + TrimStr(i) + ".TAB";
    return name;
}

bool AskTableFile(AppState& state, Prompts& prompts, FileChooser& files) {
    if (!prompts.Ask("Would you like to save your data in a file while you are measuring")) {
        state.TableFile = TableState::Declined;
        return true;
    }
    std::string name;
    do {
        name = ChosenName(state, files);
        if (name.empty()) return false;
    } while (!MayReplace(prompts, name));
    state.TableFile = FindFile(name);
    return true;
}

}  // namespace kelvo
