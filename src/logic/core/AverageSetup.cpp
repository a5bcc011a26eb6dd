#include "core/AverageSetup.h"
#include "core/Dialogs.h"
#include "core/Messages.h"
#include "core/ReadingSettings.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

bool AskAverage(ReadingSettings& reading, Prompts& prompts) {
    const auto answer = prompts.Input("Average Setup",
                                      "For experienced operators using on-line measurement only!         Please type "
                                      "in the number of readings (taken "
                                      "at 1 sec. intervals) to be averaged for each measurement, in the box below",
                                      TrimStr(int{reading.ReadAvg}));
    if (!answer) return false;
    try {
        const std::int16_t wanted = ToInt16(Val(*answer));
        if (wanted < 0) throw RuntimeError(ErrorNumber::Subscript);  // no buffer has so few places
        reading.ReadAvg = wanted == 0 ? std::int16_t{1} : wanted;
    } catch (const RuntimeError&) {
        prompts.Message(DataOutOfRange);
        return false;
    }
    return true;
}

}  // namespace kelvo
