#include "core/AverageSetup.h"
#include "core/Messages.h"

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

bool AskAverage(AppState& state, Prompts& prompts) {
    const auto answer = prompts.Input("Average Setup",
                                      "For experienced operators using on-line measurement only!         Please type "
                                      "in the number of readings (taken "
                                      "at 1 sec. intervals) to be averaged for each measurement, in the box below",
                                      TrimStr(int{state.ReadAvg}));
    if (!answer) return false;
    try {
        const std::int16_t wanted = ToInt16(Val(*answer));
        if (wanted < 0) throw RuntimeError(ErrorNumber::Subscript);  // no buffer has so few places
        state.ReadAvg = wanted == 0 ? std::int16_t{1} : wanted;
    } catch (const RuntimeError&) {
        prompts.Message(DataOutOfRange);
        return false;
    }
    return true;
}

}  // namespace kelvo
