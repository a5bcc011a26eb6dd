#include "core/AverageSetup.h"

#include "support/Scripted.h"

namespace kelvo::test {
namespace {

TEST(AverageSetup, Answers) {
    struct Row {
        std::optional<std::string> answer;
        int readings;
        bool set;
        bool refused = false;
    };
    const Row rows[] = {
        {"12", 12, true},         {" 5 readings", 5, true},  {"", 1, true},          {"0", 1, true}, {"many", 1, true},
        {std::nullopt, 7, false}, {"32768", 7, false, true}, {"-3", 7, false, true},
    };
    for (const Row& row : rows) {
        AppState state;
        state.ReadAvg = 7;
        ScriptedPrompts prompts;
        prompts.ExpectInput("Average Setup", row.answer);
        if (row.refused) prompts.ExpectMessage("Data out of range, please try again.");
        EXPECT_EQ(AskAverage(state, prompts), row.set) << row.answer.value_or("cancel");
        EXPECT_EQ(state.ReadAvg, row.readings) << row.answer.value_or("cancel");
        EXPECT_EQ(prompts.lastInitial, "7");
    }
}

}  // namespace
}  // namespace kelvo::test
