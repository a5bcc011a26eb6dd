#include "menu/FileOpening.h"

#include <algorithm>
#include <array>

#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/FileKinds.h"
#include "core/IonSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/Routes.h"
#include "core/SaveAndOpen.h"
#include "core/ScreenNavigator.h"
#include "core/StatusMessages.h"
#include "core/StoredWithCalibration.h"
#include "core/TableState.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "text/Files.h"

namespace kelvo {
namespace {

/// How a kind of file is opened.
struct Opening {
    FileKind kind;
    int menuBranch;    ///< of the menu that "Back" leads to
    OpensAsked asked;  ///< Nothing: the screen opens the file as it loads, or needs none
};
constexpr std::array Openings = {
    Opening{FileKind::IseCalibration, IseBranch, OpensAsked::OwnFile},
    Opening{FileKind::Table, IseBranch, OpensAsked::Table},
    Opening{FileKind::SampleAddition, IseBranch, OpensAsked::OwnFile},
    Opening{FileKind::StandardAddition, IseBranch, OpensAsked::OwnFile},
    Opening{FileKind::SampleAdditionTable, IseBranch, OpensAsked::Table},
    Opening{FileKind::StandardAdditionTable, IseBranch, OpensAsked::Table},
    Opening{FileKind::PhTable, PhBranch, OpensAsked::Table},
    Opening{FileKind::PhRecording, PhBranch, OpensAsked::Nothing},
    Opening{FileKind::PhCalibration, PhBranch, OpensAsked::Nothing},
};

const Opening* OpeningOf(const FileKindRow* kind) {
    if (kind == nullptr) return nullptr;
    const auto found = std::ranges::find(Openings, kind->kind, &Opening::kind);
    return found == Openings.end() ? nullptr : &*found;
}

std::string EndingsWithAScreen() {
    std::string endings;
    for (const FileKindRow& row : FileKindRows())
        if (row.screen != ScreenCode::None) endings.append(endings.empty() ? "" : ", ").append(row.ending);
    return endings;
}

}  // namespace

/// The pH calibration that the file holds is in use from now on; the menu tells it.
void FileOpening::UsePhCalibration(const std::string& file) {
    if (OpenPhCalibration(state_, prompts_, files_, file) == OpenOutcome::Opened)
        state_.Get<StatusMessages>().StatusMessage = "The pH calibration of " + LastPart(file) + " is in use.";
}

bool FileOpening::Open(const std::string& file) {
    const FileKindRow* kind = FileKindOf(file);
    const Opening* opening = OpeningOf(kind);
    if (opening == nullptr) {
        prompts_.Message(file + "\n\nKelvo opens files that end in " + EndingsWithAScreen() + ".", {},
                         Icon::Exclamation);
        return false;
    }
    if (!FileExists(file)) {
        prompts_.Message("File" + file + "Not Found.", {}, Icon::Exclamation);
        return false;
    }
    Navigation& navigation = state_;
    const Paths& paths = state_;
    navigation.MenuBranch = opening->menuBranch;
    navigation.pHMode = opening->menuBranch == PhBranch ? -1 : 0;
    if (kind->kind == FileKind::PhCalibration) {
        UsePhCalibration(file);
    } else if (FileExists(ResolvePhCalibration(paths.IniPath, paths.AppPath))) {
        // As on the way through the menu; but nobody has asked for that file, so nothing is said when it is missing.
        LoadLastPhCalibration(state_, prompts_, files_);
    }
    state_.Get<IseCalibration>().CaliDirty = 0;
    state_.Get<TableState>().ViewOnly = kind->kind == FileKind::PhRecording ? 1 : 0;
    IonSettings& ions = state_;
    const std::int16_t ion = ions.IonIndex;
    if (kind->kind == FileKind::IseCalibration) ions.IonIndex = NoIon;
    if (kind->kind != FileKind::PhCalibration) answerNext_(file);
    screens_.Show(kind->screen);
    if (opening->asked != OpensAsked::Nothing) open_(kind->screen, opening->asked);
    answerNext_(std::nullopt);
    if (ions.IonIndex == NoIon) ions.IonIndex = ion;
    return true;
}

}  // namespace kelvo
