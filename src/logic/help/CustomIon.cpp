#include "help/CustomIon.h"

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

bool TakeCustomIon(AppState& state, Prompts& prompts, const std::string& typed, const std::string& weight) {
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
    state.CustomIon = name;
    state.CustomWeight = value;
    return true;
}

void StoreCustomIon(AppState& state) {
    if (Trim(state.CustomIon).empty()) state.CustomIon = "Custom";
    if (state.CustomWeight == 0) state.CustomWeight = 100;
    state.Ions.names[CustomIonRow] = state.CustomIon;
    state.Ions.weights[CustomIonRow] = state.CustomWeight;
}

}  // namespace kelvo
