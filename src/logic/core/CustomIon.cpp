#include "core/CustomIon.h"

#include "core/Dialogs.h"
#include "core/IonSettings.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

bool TakeCustomIon(IonSettings& ion, Prompts& prompts, const std::string& typed, const std::string& weight) {
    const std::string name = Trim(typed);
    if (name.empty() && Trim(weight).empty()) {
        prompts.Message("You need to type in the ion name and its molecular weight");
        return false;
    }
    if (name.empty()) {
        prompts.Message("You need to type in the ion name");
        return false;
    }
    float value = 0;
    try {
        value = ToSingle(Val(weight));
    } catch (const RuntimeError&) {
        value = 0;  // a weight that no 32-bit number holds is no weight
    }
    if (value == 0) {
        prompts.Message("You need to type in the ion's molecular weight");
        return false;
    }
    ion.CustomIon = name;
    ion.CustomWeight = value;
    return true;
}

void StoreCustomIon(IonSettings& ion) {
    if (Trim(ion.CustomIon).empty()) ion.CustomIon = "Custom";
    if (ion.CustomWeight == 0) ion.CustomWeight = 100;
    ion.Ions.names[CustomIonRow] = ion.CustomIon;
    ion.Ions.weights[CustomIonRow] = ion.CustomWeight;
}

}  // namespace kelvo
