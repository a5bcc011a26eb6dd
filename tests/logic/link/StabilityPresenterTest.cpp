#include "link/StabilityPresenter.h"

#include "app/AppState.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using Form = StabilityPresenter;

struct Dialog {
    explicit Dialog(int asd) {
        state.ASD = static_cast<std::int16_t>(asd);
        state.IniPath = folder / "KELVO.ini";
        state.ASDavg = 7;
        state.Threshold = 0.05f;
        state.Preset = 45;
        state.Waittime = 6;
        form.Load();
    }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    Form form{state, prompts};
};

TEST(StabilityPresenter, OpensByTheModeInForceAndOptionsExcludeEachOther) {
    const std::pair<int, const char*> rows[] = {
        {0, "0,0|0,0,0,0|7,45,0.05,45"}, {1, "1,0|1,0,1,0|7,6,0.05,45"}, {2, "0,1|0,0,0,1|7,6,0.05,45"}};
    for (const auto& [asd, seen] : rows) {
        const Dialog d(asd);
        EXPECT_EQ(Joined(d.form.option, d.form.enabled, d.form.text), seen) << asd;
    }
    Dialog d(2);
    d.form.Click(Form::StableReading, true);
    EXPECT_EQ(Joined(d.form.option, d.form.Next(Form::Average), d.form.Next(Form::Threshold)),
              Joined("1,0", Form::Threshold, Form::OkButton));
}

TEST(StabilityPresenter, OkChecksInOrderAndKeepsAllOrNothing) {
    const std::string range = "data are out of range, please type in again.";
    const std::tuple<int, std::array<std::string, 4>, std::string, int> rows[] = {
        {0, {"0.9", "x", "0.05", "30"}, "The average setting", Form::Average},
        {0, {"31", "x", "9", "30"}, "The average setting", Form::Average},
        {0, {"30", "x", "0.9", "30"}, "", Form::Average},
        {0, {"1", "x", "0.001", "99999"}, "", Form::Average},
        {0, {"10", "x", "0.0009", "30"}, "The threshold ", Form::Threshold},
        {0, {"10", "x", "0.91", "30"}, "The threshold ", Form::Threshold},
        {1, {"10", "x", "0.05", "0"}, "The pes-set time ", Form::PresetTime},
        {1, {"10", "x", "0.05", "30001"}, "The pes-set time ", Form::PresetTime},
        {1, {"99", "x", "9", "30000"}, "", Form::Average},
    };
    for (const auto& [option, text, refused, focus] : rows) {
        Dialog d(0);
        d.form.Click(option, true);
        d.form.text = text;
        const bool fine = refused.empty();
        if (!fine) d.prompts.ExpectMessage(refused + range);
        const bool done = d.form.Ok();
        EXPECT_EQ(Joined(done, d.state.ASD, d.form.focus, d.folder.Names().size()),
                  Joined(fine, fine ? option + 1 : 0, focus, fine ? 1 : 0))
            << Joined(text) << ": nothing is saved when one is wrong";
    }
}

TEST(StabilityPresenter, OkWritesTheFourSettings) {
    Dialog d(1);
    d.form.text = {"12", "6", ".02", "99"};
    ASSERT_TRUE(d.form.Ok());
    EXPECT_EQ(d.folder.Get("KELVO.ini"), "[Hareware]\r\nASD= 1\r\nASDavg= 12\r\nthreshold= 0.02\r\nPreset= 45\r\n");
    d.form.Reset();
    ASSERT_TRUE(d.form.Ok());
    EXPECT_EQ(Joined(d.state.ASD, d.state.ASDavg), "0|12") << "with both off the other values stay as they are";
}

}  // namespace
}  // namespace kelvo::test
