#include "link/StabilityForm.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/Settings.h"
#include "link/LinkFakes.h"

namespace kelvo {
namespace {

constexpr auto Range = "data are out of range, please type in again.";

class StabilityFormTest : public testing::Test {
 protected:
    StabilityFormTest() {
        state.IniPath = file;
        state.ASDavg = 7;
        state.Threshold = 0.05f;
        state.Preset = 45;
        state.Waittime = 6;
    }
    ~StabilityFormTest() override { std::filesystem::remove(file); }
    void Open(int asd) {
        state.ASD = static_cast<std::int16_t>(asd);
        form.Load();
    }
    std::string Kept(const char* key) const { return ReadSetting("Hareware", key, file); }

    const std::string file =
        (std::filesystem::temp_directory_path() / ("kelvo-asd-" + std::to_string(getpid()))).string();
    AppState state;
    NotedPrompts prompts;
    StabilityForm form{state, prompts};
};

TEST_F(StabilityFormTest, OpensByTheModeInForce) {
    const struct {
        int asd;
        std::array<bool, 2> option;
        std::array<bool, 4> enabled;
        const char* waiting;
    } rows[] = {{-1, {false, false}, {false, false, false, false}, "45"},
                {0, {false, false}, {false, false, false, false}, "45"},
                {1, {true, false}, {true, false, true, false}, "6"},
                {2, {false, true}, {false, false, false, true}, "6"}};
    for (const auto& row : rows) {
        Open(row.asd);
        EXPECT_EQ(form.option, row.option) << row.asd;
        EXPECT_EQ(form.enabled, row.enabled) << row.asd;
        EXPECT_EQ(form.text, (std::array<std::string, 4>{"7", row.waiting, "0.05", "45"})) << row.asd;
    }
}

TEST_F(StabilityFormTest, OptionsExcludeEachOtherAndLeadEnter) {
    Open(0);
    form.Click(StabilityForm::StableReading, true);
    EXPECT_EQ(form.enabled, (std::array<bool, 4>{true, false, true, false}));
    EXPECT_EQ(form.Next(StabilityForm::Average), StabilityForm::Threshold);
    EXPECT_EQ(form.Next(StabilityForm::Threshold), StabilityForm::OkButton);
    form.Click(StabilityForm::AfterTime, true);
    EXPECT_EQ(form.option, (std::array<bool, 2>{false, true}));
    EXPECT_EQ(form.enabled, (std::array<bool, 4>{false, false, false, true}));
    form.Click(StabilityForm::AfterTime, false);
    EXPECT_EQ(form.enabled, (std::array<bool, 4>{}));
}

TEST_F(StabilityFormTest, OkChecksInOrderAndKeepsAllOrNothing) {
    const struct {
        const char* name;
        int option;
        const char *average, *threshold, *preset;
        const char* refused;  // head of the message, null when all is well
        int focus;
    } rows[] = {
        {"average 0", 0, "0", "0.05", "30", "The average setting", StabilityForm::Average},
        {"average 31", 0, "31", "0.05", "30", "The average setting", StabilityForm::Average},
        {"average 30", 0, "30", "0.05", "30", nullptr, 0},
        {"average first", 0, "", "9", "30", "The average setting", StabilityForm::Average},
        {"threshold 0.0009", 0, "10", "0.0009", "30", "The threshold ", StabilityForm::Threshold},
        {"threshold 0.9", 0, "10", "0.9", "30", nullptr, 0},
        {"threshold 0.91", 0, "10", "0.91", "30", "The threshold ", StabilityForm::Threshold},
        {"threshold 0.001", 0, "1", "0.001", "99999", nullptr, 0},
        {"preset 0", 1, "99", "9", "0", "The pes-set time ", StabilityForm::PresetTime},
        {"preset 30001", 1, "10", "0.05", "30001", "The pes-set time ", StabilityForm::PresetTime},
        {"preset 30000", 1, "99", "9", "30000", nullptr, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        prompts.messages.clear();
        std::filesystem::remove(file);
        Open(0);
        form.Click(row.option, true);
        form.text = {row.average, "x", row.threshold, row.preset};
        EXPECT_EQ(form.Ok(), row.refused == nullptr);
        EXPECT_EQ(state.ASD, row.refused == nullptr ? row.option + 1 : 0);
        if (row.refused == nullptr) continue;
        EXPECT_EQ(prompts.messages, (std::vector<std::string>{row.refused + std::string(Range)}));
        EXPECT_EQ(form.focus, row.focus);
        EXPECT_EQ(Kept("ASD"), "") << "nothing is saved";
    }
}

TEST_F(StabilityFormTest, OkWritesTheFourSettings) {
    Open(1);
    form.text[StabilityForm::Average] = "12";
    form.text[StabilityForm::Threshold] = ".02";
    ASSERT_TRUE(form.Ok());
    EXPECT_EQ(Kept("ASD") + "|" + Kept("ASDavg") + "|" + Kept("threshold") + "|" + Kept("Preset"), "1|12|0.02|45");
    EXPECT_EQ(state.ASDavg, 12);
    form.Reset();
    EXPECT_EQ(form.text[0] + "|" + form.text[1], "10|30");
    ASSERT_TRUE(form.Ok());
    EXPECT_EQ(Kept("ASD") + "|" + Kept("ASDavg"), "0|12") << "with both off the other values stay as they are";
}

}  // namespace
}  // namespace kelvo
