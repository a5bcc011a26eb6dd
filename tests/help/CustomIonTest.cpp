#include "help/CustomIon.h"

#include "support/Scripted.h"

namespace kelvo::test {
namespace {

TEST(CustomIon, WhatIsTakenAndWhatIsRefused) {
    struct Row {
        const char *name, *weight;
        const char* message;  ///< or none:
        float stored = 0;
    };
    const Row rows[] = {
        {"Mg", "24.305", nullptr, 24.305f},
        {"Mg", "-2", nullptr, -2},
        {"Mg", "24 g", nullptr, 24},
        {"", "", "You need to type in the ion name and its molecular weight"},
        {"", "abc", "You need to type in the ion name"},
        {"Mg", "", "You need to type in the ion's molecular weight"},
        {"Mg", "abc", "You need to type in the ion's molecular weight"},
        {"Mg", "0.0", "You need to type in the ion's molecular weight"},
        {"Mg", "1E39", "You need to type in the ion's molecular weight"},
        {"Mg", "1E-60", "You need to type in the ion's molecular weight"},
    };
    for (const Row& row : rows) {
        AppState state;
        state.CustomIon = "Li";
        state.CustomWeight = 6.94f;
        ScriptedPrompts prompts;
        if (row.message) prompts.ExpectMessage(row.message);
        EXPECT_EQ(TakeCustomIon(state, prompts, row.name, row.weight), row.message == nullptr) << row.weight;
        EXPECT_EQ(state.CustomIon, row.message ? "Li" : row.name) << row.weight;
        EXPECT_EQ(state.CustomWeight, row.message ? 6.94f : row.stored) << row.weight;
        EXPECT_EQ(state.Ions.names[25], "Custom") << "the caller fills the table";
    }
}

TEST(CustomIon, RowOfTheTable) {
    AppState state;
    state.CustomIon = "Mg";
    state.CustomWeight = 24.305f;
    StoreCustomIon(state);
    EXPECT_EQ(state.Ions.names[25], "Mg");
    EXPECT_EQ(state.Ions.weights[25], 24.305f);
    state.CustomIon.clear();
    state.CustomWeight = 0;
    StoreCustomIon(state);
    EXPECT_EQ(state.CustomIon + state.Ions.names[25], "CustomCustom");
    EXPECT_EQ(state.CustomWeight + state.Ions.weights[25], 200);
    EXPECT_EQ(state.Ions.names[24], "pH(Hydrogen)");
}

}  // namespace
}  // namespace kelvo::test
