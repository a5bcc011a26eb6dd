#include "core/CustomIon.h"

#include "app/AppState.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

TEST(CustomIon, WhatIsTakenAndWhatIsRefused) {
    const char* const both = "You need to type in the ion name and its molecular weight";
    const char* const weight = "You need to type in the ion's molecular weight";
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        // name and weight typed, message, name and weight held
        {"Mg", "24.305 g", nullptr, "Mg|24.305"},
        {"Mg", "-2", nullptr, "Mg|-2"},
        {" Mg ", "24", nullptr, "Mg|24"},
        {"", "", both, "Li|6.94"},
        {"  ", " ", both, "Li|6.94"},
        {"  ", "24", "You need to type in the ion name", "Li|6.94"},
        {"", "abc", "You need to type in the ion name", "Li|6.94"},
        {"Mg", "", weight, "Li|6.94"},
        {"Mg", "1E39", weight, "Li|6.94"},
        {"Mg", "1E-60", weight, "Li|6.94"},
    };
    for (const auto& [name, typed, message, held] : rows) {
        AppState state;
        state.CustomIon = "Li";
        state.CustomWeight = 6.94f;
        ScriptedPrompts prompts;
        if (message) prompts.ExpectMessage(message);
        EXPECT_EQ(TakeCustomIon(state, prompts, name, typed), message == nullptr) << typed;
        EXPECT_EQ(Joined(state.CustomIon, state.CustomWeight), held) << typed;
    }
    AppState state;
    StoreCustomIon(state);
    EXPECT_EQ(Joined(state.CustomIon, state.CustomWeight, state.Ions.names[25], state.Ions.weights[25]),
              "Custom|100|Custom|100");
}

}  // namespace
}  // namespace kelvo::test
