#include "addition/KnownSlopeForm.h"

#include "app/AppState.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

constexpr int Slope = KnownSlopeForm::Slope, Celsius = KnownSlopeForm::Celsius, Fahrenheit = KnownSlopeForm::Fahrenheit,
              Ok = KnownSlopeForm::OkButton;

struct Dialog {
    std::string BoxesAndFocus() { return Joined(form.Text(0), form.Text(1), form.Text(2), form.TakeFocus()); }
    AppState state;
    ScriptedPrompts prompts;
    KnownSlopeForm form{state, prompts};
};

TEST(KnownSlopeForm, OffersTheWorkingTemperature) {
    const char* const rows[][2] = {{"24.96", "|25.0|76.9|0"}, {"-1", "|-1.0|30.2|0"}, {" ", "|||0"}, {"1E39", "|||0"}};
    for (const auto& [temperature, shown] : rows) {
        Dialog d;
        d.state.CaliTemp = temperature;
        d.form.Edited(Slope, "58");
        d.form.Begin();
        EXPECT_EQ(d.BoxesAndFocus(), shown) << temperature;
    }
}

TEST(KnownSlopeForm, EnterConvertsWithinItsRange) {
    const std::tuple<int, const char*, const char*, int, bool> rows[] = {
        {Celsius, "", "||", Fahrenheit, true},         {Celsius, "0", "|0| 32", Ok, true},
        {Celsius, "99.9", "|99.9| 211.82", Ok, true},  {Celsius, "-0.1", "|-0.1|", Celsius, false},
        {Celsius, "99.91", "|99.91|", Celsius, false}, {Fahrenheit, "32", "| 0|32", Ok, true},
        {Fahrenheit, "212", "| 100|212", Ok, true},    {Fahrenheit, "212.1", "||212.1", Fahrenheit, false},
        {Celsius, "1E39", "||", Celsius, false},
    };
    for (const auto& [box, text, boxes, focus, taken] : rows) {
        Dialog d;
        d.form.Edited(box, text);
        if (!taken) d.prompts.ExpectMessage("Data out of range, please re-enter");
        d.form.Enter(box);
        EXPECT_EQ(d.BoxesAndFocus(), Joined(boxes, focus)) << box << text;
        EXPECT_EQ(d.prompts.lastTitle, taken ? "" : "KNOWN ELECTRODE SLOPE");
    }
}

TEST(KnownSlopeForm, OkLetsNoTemperatureOutThat32BitsCannotHold) {
    Dialog d;
    d.state.CaliTemp = "25";
    d.form.Begin();
    d.form.Edited(Slope, "-58");
    d.form.Edited(Fahrenheit, std::string(45, '5'));
    d.prompts.ExpectMessage("Data out of range, please re-enter");
    EXPECT_FALSE(d.form.Ok());
    EXPECT_EQ(d.BoxesAndFocus(), "-58|25.0|77.0|2");
    EXPECT_TRUE(d.form.Ok());
}

}  // namespace
}  // namespace kelvo::test
