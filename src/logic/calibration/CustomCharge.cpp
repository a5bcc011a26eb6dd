#include "calibration/CustomCharge.h"

#include <cmath>
#include <cstdlib>

#include "calibration/QualityLimits.h"
#include "core/Dialogs.h"
#include "core/IonSettings.h"
#include "core/Paths.h"
#include "core/Settings.h"
#include "core/StateOf.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const ChargeKey = "CustomCharge";
const char* const IonKey = "CustomChargeIon";
constexpr int LargestCharge = 4;

/// The charge that a text means, 0 when it means none.
int ChargeOf(std::string text) {
    text = Trim(text);
    if (text.empty()) return 0;
    const char last = text.back();
    if (last == '+' || last == '-') text = last + text.substr(0, text.size() - 1);
    if (text.find_first_not_of("+-0123456789") != std::string::npos) return 0;
    const double value = Val(text);
    return std::abs(value) <= LargestCharge ? static_cast<int>(value) : 0;
}

}  // namespace

int CustomCharge(StateOf<const Paths, const IonSettings> state) {
    const Paths& paths = state;
    const IonSettings& ion = state;
    const std::string& name = ion.Ions.names[CustomIonRow];
    if (ReadSetting(QualitySection, IonKey, paths.IniPath) != name) return 0;
    return ChargeOf(ReadSetting(QualitySection, ChargeKey, paths.IniPath));
}

int AskCustomCharge(StateOf<const Paths, const IonSettings> state, Prompts& prompts, int known) {
    const Paths& paths = state;
    const IonSettings& ion = state;
    const std::string& name = ion.Ions.names[CustomIonRow];
    for (;;) {
        const auto answer = prompts.Input("Calibration Quality",
                                          "Charge of the ion \"" + name + "\" with its sign, for example 2 or -1:",
                                          known == 0 ? std::string() : std::to_string(known));
        if (!answer) return 0;
        const int charge = ChargeOf(*answer);
        if (charge != 0) {
            WriteSetting(QualitySection, ChargeKey, std::to_string(charge), paths.IniPath);
            WriteSetting(QualitySection, IonKey, name, paths.IniPath);
            return charge;
        }
        prompts.Message("Please type the charge as a whole number from -4 to 4, not 0.");
    }
}

}  // namespace kelvo
