#include "app/KeptWork.h"

#include <cstdio>
#include <exception>

#include "calibration/CaliFile.h"
#include "platform/Desk.h"
#include "tables/TableScreenLogic.h"
#include "text/Files.h"

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
std::string KeepCalibration(const House& house) {
    AppState kept = house.state;
    // An entry in progress holds the points before the one in hand.
    if (house.desk.IsLoaded(ScreenCode::fmpaidat)) kept.CaliPoints = static_cast<std::int16_t>(kept.CurrentPoint - 1);
    if (kept.CaliDirty != 1 || kept.CaliPoints < 1) return {};
    const DateTime now = house.clock.Now();
    const std::string name = KeptName(kept, now, ".ISE");
    ReplaceWholeFile(name, IseBytes(kept, now));
    return name;
}

std::string KeepTable(House& house) {
    AppState& state = house.state;
    if (state.TableOpen != 1) return {};
    if (state.TableFile.empty() || state.TableFile == "-999")
        state.TableFile = KeptName(state, house.clock.Now(), ".TAB");
    return house.table.KeepRows() == SaveOutcome::Saved ? state.TableFile : std::string();
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

void KeepUnsavedWork(House& house) {
    std::string names;
    for (const std::string& name :
         {OrNothing([&] { return KeepCalibration(house); }), OrNothing([&] { return KeepTable(house); })})
        if (!name.empty()) names += (names.empty() ? "" : "\n") + name;
    if (names.empty()) return;
    OrNothing([&] {
        ReplaceWholeFile(NotePath(house.state), names);
        return names;
    });
}

void TellKeptWork(House& house) {
    const std::string note = NotePath(house.state);
    if (!FileExists(note)) return;
    const std::string names = OrNothing([&] { return ReadWholeFile(note); });
    if (!names.empty())
        house.prompts.Message("The program ended by a failure the last time. What was not saved has been kept in:\n\n" +
                              names);
    std::remove(note.c_str());
}

}  // namespace kelvo
