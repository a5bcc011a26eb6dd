#include "app/CrashRecovery.h"

#include <cstdio>
#include <exception>

#include "addition/frmAddition.h"
#include "calibration/CaliFile.h"
#include "kit/ScreenManager.h"
#include "tables/TableFile.h"
#include "tables/TablePresenter.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

std::string NotePath(const AppState& state) {
    return state.AppPath + "KEPT.TXT";
}

/// "KEPT20261124-204905" with that extension, in the program's folder.
std::string KeptName(const AppState& state, const DateTime& time, const char* extension) {
    char stamp[96];
    std::snprintf(stamp, sizeof stamp, "KEPT%04d%02d%02d-%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    return state.AppPath + stamp + extension;
}

/// Name of the file written, empty when there is nothing to keep.
std::string KeepCalibration(const AppContext& context) {
    AppState kept = context.state;
    // An entry in progress holds the points before the one in hand.
    if (context.screens.IsLoaded(ScreenCode::fmpaidat))
        kept.CaliPoints = static_cast<std::int16_t>(kept.CurrentPoint - 1);
    if (kept.CaliDirty != 1 || kept.CaliPoints < 1) return {};
    const DateTime now = context.clock.Now();
    const std::string name = KeptName(kept, now, ".ISE");
    ReplaceWholeFile(name, IseBytes(kept, now));
    return name;
}

std::string KeepTable(AppContext& context) {
    AppState& state = context.state;
    if (state.TableOpen != 1) return {};
    if (!state.HasTableFile())
        state.TableFile = KeptName(state, context.clock.Now(), Upper(KindOf(state).extension).c_str());
    return context.table.KeepRows() == SaveOutcome::Saved ? state.TableFile : std::string();
}

/// The boxes of an addition screen that stand in no file.
std::string KeepMeasurement(const AppContext& context) {
    for (const ScreenCode code : {ScreenCode::frmStanad01, ScreenCode::frmSampa}) {
        const auto* screen = dynamic_cast<const frmAddition*>(context.screens.Find(code));
        if (screen == nullptr || !screen->Presenter().HoldsUnsaved()) continue;
        const AdditionPresenter& presenter = screen->Presenter();
        const std::string name =
            KeptName(context.state, context.clock.Now(), Upper(presenter.Method().file->extension).c_str());
        ReplaceWholeFile(name, presenter.Bytes());
        return name;
    }
    return {};
}

template <typename Keep>
std::string OrNothing(Keep keep) {
    try {
        return keep();
    } catch (const std::exception&) {
        return {};
    }
}

}  // namespace

void KeepUnsavedWork(AppContext& context) {
    std::string names;
    for (const std::string& name :
         {OrNothing([&] { return KeepCalibration(context); }), OrNothing([&] { return KeepMeasurement(context); }),
          OrNothing([&] { return KeepTable(context); })})
        if (!name.empty()) names += (names.empty() ? "" : "\n") + name;
    if (names.empty()) return;
    OrNothing([&] {
        ReplaceWholeFile(NotePath(context.state), names);
        return names;
    });
}

void ReportKeptWork(AppContext& context) {
    const std::string note = NotePath(context.state);
    if (!FileExists(note)) return;
    const std::string names = OrNothing([&] { return ReadWholeFile(note); });
    if (!names.empty())
        context.prompts.Message(
            "The program ended by a failure the last time. What was not saved has been kept in:\n\n" + names);
    std::remove(note.c_str());
}

}  // namespace kelvo
