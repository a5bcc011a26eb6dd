#include "app/OpenFile.h"

#include <QAction>
#include <QPushButton>
#include <array>

#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/FileKinds.h"
#include "core/IonSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "ph/PhCalibrationFile.h"
#include "text/Files.h"

namespace kelvo {
namespace {

/// How a screen opens a kind of file.
struct Opening {
    FileKind kind;
    int menuBranch;    ///< of the menu that "Back" leads to: 0 pH, 1 ISE
    const char* item;  ///< of its menu; null: the screen opens the file as it loads, or needs none
};
constexpr int PhBranch = 0, IseBranch = 1;
constexpr std::array Openings = {
    Opening{FileKind::IseCalibration, IseBranch, "mnuOpen(0)"},
    Opening{FileKind::Table, IseBranch, "mnuOpen(1)"},
    Opening{FileKind::SampleAddition, IseBranch, "mnuOpen(0)"},
    Opening{FileKind::StandardAddition, IseBranch, "mnuOpen(0)"},
    Opening{FileKind::SampleAdditionTable, IseBranch, "mnuOpen(1)"},
    Opening{FileKind::StandardAdditionTable, IseBranch, "mnuOpen(1)"},
    Opening{FileKind::PhTable, PhBranch, "mnuOpen(0)"},
    Opening{FileKind::PhRecording, PhBranch, nullptr},
    Opening{FileKind::PhCalibration, PhBranch, nullptr},
};

const Opening* OpeningOf(const FileKindRow* kind) {
    if (kind == nullptr) return nullptr;
    for (const Opening& opening : Openings)
        if (opening.kind == kind->kind) return &opening;
    return nullptr;
}

std::string EndingsWithAScreen() {
    std::string endings;
    for (const FileKindRow& row : FileKindRows())
        if (row.screen != ScreenCode::None) endings.append(endings.empty() ? "" : ", ").append(row.ending);
    return endings;
}

/// The pH calibration that the file holds is in use from now on; the menu tells it.
void UsePhCalibration(AppContext& context, const std::string& file) {
    if (OpenPhCalibration(context.state, context.prompts, context.files, file) == OpenOutcome::Opened)
        context.state.Get<StatusMessages>().StatusMessage = "The pH calibration of " + LastPart(file) + " is in use.";
}

/// The live display behind a table is not meant to run.
void StandStill(const Screen& screen) {
    if (auto* stop = screen.findChild<QPushButton*>(QStringLiteral("cmdDsply(1)"))) stop->click();
}

}  // namespace

bool OpenFileInScreen(AppContext& context, const std::string& file, const AnswerNext& answerNext) {
    const WholeState& state = context.state;
    const FileKindRow* kind = FileKindOf(file);
    const Opening* opening = OpeningOf(kind);
    if (opening == nullptr) {
        context.prompts.Message(file + "\n\nKelvo opens files that end in " + EndingsWithAScreen() + ".", {},
                                Icon::Exclamation);
        return false;
    }
    if (!FileExists(file)) {
        context.prompts.Message("File" + file + "Not Found.", {}, Icon::Exclamation);
        return false;
    }
    state.Get<Navigation>().MenuBranch = opening->menuBranch;
    state.Get<Navigation>().pHMode = opening->menuBranch == PhBranch ? -1 : 0;
    if (kind->kind == FileKind::PhCalibration) {
        UsePhCalibration(context, file);
    } else if (FileExists(ResolvePhCalibration(state.Get<Paths>().IniPath, state.Get<Paths>().AppPath))) {
        // As on the way through the menu; but nobody has asked for that file, so nothing is said when it is missing.
        LoadLastPhCalibration(state, context.prompts, context.files);
    }
    state.Get<IseCalibration>().CaliDirty = 0;
    state.Get<TableState>().ViewOnly = kind->kind == FileKind::PhRecording ? 1 : 0;
    const std::int16_t ion = state.Get<IonSettings>().IonIndex;
    if (kind->kind == FileKind::IseCalibration) state.Get<IonSettings>().IonIndex = NoIon;
    if (kind->kind != FileKind::PhCalibration) answerNext(file);
    context.screens.Show(kind->screen);
    if (Screen* screen = context.screens.Find(kind->screen); screen != nullptr && opening->item != nullptr) {
        if (kind->kind == FileKind::PhTable) StandStill(*screen);
        if (auto* item = screen->findChild<QAction*>(QString::fromLatin1(opening->item))) item->trigger();
    }
    answerNext(std::nullopt);
    if (state.Get<IonSettings>().IonIndex == NoIon) state.Get<IonSettings>().IonIndex = ion;
    return true;
}

}  // namespace kelvo
