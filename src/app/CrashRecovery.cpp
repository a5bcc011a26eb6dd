#include "app/CrashRecovery.h"

#include <utility>

#include "addition/frmAddition.h"
#include "calibration/CaliFile.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "kit/ScreenManager.h"
#include "link/Link.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "tables/TablePresenter.h"
#include "text/Number.h"

namespace kelvo {
namespace {

std::vector<UnsavedPiece> CalibrationInHand(const AppContext& context) {
    CalibrationState kept = context.state.Get<CalibrationState>();
    // An entry in progress holds the points before the one in hand.
    if (context.screens.IsLoaded(ScreenCode::fmpaidat))
        kept.CaliPoints = static_cast<std::int16_t>(kept.CurrentPoint - 1);
    if (kept.CaliDirty != 1 || kept.CaliPoints < 1) return {};
    const std::string bytes = IseBytes({kept, context.state.Get<HardwareSettings>()}, context.clock.Now());
    return {{"the calibration", ".ISE", bytes, {}, CalibrationFactsBytes(kept, {}, bytes)}};
}

/// The pH calibration in use that no file holds; a run in progress tells of its own buffers.
std::vector<UnsavedPiece> PhCalibrationInHand(const PhCalibration& calibration) {
    if (!calibration.PhCaliUnsaved) return {};
    return {{"the pH calibration", ".CLI", PhBytes(calibration), {}}};
}

/// The boxes of an addition screen that stand in no file.
std::vector<UnsavedPiece> AdditionInHand(const AppContext& context) {
    std::vector<UnsavedPiece> pieces;
    for (const ScreenCode code : {ScreenCode::frmStanad01, ScreenCode::frmSampa}) {
        const auto* screen = dynamic_cast<const frmAddition*>(context.screens.Find(code));
        if (screen == nullptr || !screen->Presenter().HoldsUnsaved()) continue;
        const AdditionPresenter& presenter = screen->Presenter();
        pieces.push_back(
            {"the boxes of the addition", Upper(presenter.Method().file->extension), presenter.Bytes(), {}});
    }
    return pieces;
}

std::string Lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += "\n" + line;
    return text;
}

}  // namespace

CrashRecovery::CrashRecovery(AppContext& context, std::vector<std::string> folders)
    : context_(context),
      kept_(std::move(folders), context.clock),
      calibration_(context.unsaved.Add([&context] { return CalibrationInHand(context); })),
      phCalibration_(context.unsaved.Add([&context] { return PhCalibrationInHand(context.state); })),
      addition_(context.unsaved.Add([&context] { return AdditionInHand(context); })),
      table_(context.unsaved.Add([&context] { return context.table.UnsavedRows(); })) {}

RecoveryFiles::Outcome CrashRecovery::KeepAll(End end) {
    return kept_.Keep(context_.unsaved.Collect(), end);
}

void CrashRecovery::KeepInSilence(End end) {
    KeepAll(end);
}

void CrashRecovery::Keep(End end) {
    for (;;) {
        const RecoveryFiles::Outcome outcome = KeepAll(end);
        if (outcome.lost.empty()) return;
        const bool again = context_.prompts.AskToSave(
            "The program ends, and no folder takes what is not saved:" + Lines(outcome.lost) +
                "\n\nTried:" + Lines(outcome.failures) + "\n\nMake room in one of them. Try again? With No it is lost.",
            "Kelvo");
        if (!again) return;
    }
}

void CrashRecovery::EndByFailure(const std::string& text) {
    if (context_.link != nullptr) context_.link->StopLink();
    Keep(End::Failure);
    context_.prompts.Message(text, "Kelvo", Icon::Exclamation);
    context_.screens.EndProgram(1);
}

void CrashRecovery::Report() {
    const std::string notes = kept_.Notes();
    if (notes.empty()) return;
    context_.prompts.Message(notes);
    // Not before: an end while they stand on the screen leaves them for the next start.
    kept_.NotesRead();
}

}  // namespace kelvo
