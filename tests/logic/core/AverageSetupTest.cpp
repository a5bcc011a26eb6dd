#include "core/AverageSetup.h"

#include <tuple>

#include "app/AppState.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

TEST(AverageSetup, Answers) {
    const std::tuple<std::optional<std::string>, int, bool> rows[] = {
        {"12", 12, true},         {" 5 readings", 5, true}, {"", 1, true},   {"0", 1, true},
        {std::nullopt, 7, false}, {"32768", 7, false},      {"-3", 7, false}};
    for (const auto& [answer, readings, set] : rows) {
        AppState state;
        state.ReadAvg = 7;
        ScriptedPrompts prompts;
        prompts.ExpectInput("Average Setup", answer);
        if (answer && !set) prompts.ExpectMessage("Data out of range, please try again.");
        EXPECT_EQ(AskAverage(state, prompts), set) << answer.value_or("cancel");
        EXPECT_EQ(state.ReadAvg, readings) << answer.value_or("cancel");
        EXPECT_EQ(prompts.lastInitial, "7");
    }
}

}  // namespace
}  // namespace kelvo::test
