#include "addition/KnownSlopeSheet.h"

#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

constexpr int Slope = KnownSlopeSheet::Slope, Celsius = KnownSlopeSheet::Celsius,
              Fahrenheit = KnownSlopeSheet::Fahrenheit, Ok = KnownSlopeSheet::OkButton;

struct Dialog {
    AppState state;
    ScriptedPrompts prompts;
    KnownSlopeSheet sheet{state, prompts};
    std::string Boxes() const { return sheet.Text(0) + "|" + sheet.Text(1) + "|" + sheet.Text(2); }
};

TEST(KnownSlopeSheet, OffersTheWorkingTemperature) {
    const char* const rows[][2] = {
        {"25", "|25.0|77.0"}, {" 37 ", "|37.0|98.6"}, {"24.96", "|25.0|76.9"}, {"-1", "|-1.0|30.2"},
        {"", "||"},           {"  ", "||"},           {"1E39", "||"},          {"-1E300", "||"}};
    for (const auto& [temperature, boxes] : rows) {
        Dialog d;
        d.state.CaliTemp = temperature;
        d.sheet.Edited(Slope, "58");
        d.sheet.Begin();
        EXPECT_EQ(d.Boxes(), boxes) << temperature;
        EXPECT_EQ(d.sheet.TakeFocus(), Slope);
        EXPECT_TRUE(d.sheet.At(Slope).lead);
    }
}

TEST(KnownSlopeSheet, EnterConvertsWithinItsRange) {
    struct Row {
        const char* name;
        int box;
        const char* text;
        const char* boxes;
        int focus;
        bool refused = false;
    };
    const Row rows[] = {
        {"slope", Slope, "58", "58||", Celsius},
        {"an empty slope moves on as well", Slope, "", "||", Celsius},
        {"no temperature in °C", Celsius, "", "||", Fahrenheit},
        {"25 °C", Celsius, "25", "|25| 77", Ok},
        {"lowest", Celsius, "0", "|0| 32", Ok},
        {"highest", Celsius, "99.9", "|99.9| 211.82", Ok},
        {"below", Celsius, "-0.1", "|-0.1|", Celsius, true},
        {"above", Celsius, "99.91", "|99.91|", Celsius, true},
        {"lowest °F", Fahrenheit, "32", "| 0|32", Ok},
        {"highest °F", Fahrenheit, "212", "| 100|212", Ok},
        {"below in °F", Fahrenheit, "31.9", "||31.9", Fahrenheit, true},
        {"above in °F", Fahrenheit, "212.1", "||212.1", Fahrenheit, true},
        {"empty in °F is 0", Fahrenheit, "", "||", Fahrenheit, true},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.sheet.Edited(row.box, row.text);
        if (row.refused) d.prompts.ExpectMessage("Data out of range, please re-enter");
        d.sheet.Enter(row.box);
        EXPECT_EQ(d.Boxes(), row.boxes) << row.name;
        EXPECT_EQ(d.sheet.TakeFocus(), row.focus) << row.name;
        EXPECT_EQ(d.sheet.TakeFocus(), Sheet::NoFocus) << "a wish is taken once";
        EXPECT_EQ(d.prompts.lastTitle, row.refused ? "KNOWN ELECTRODE SLOPE" : "") << row.name;
    }
}

TEST(KnownSlopeSheet, Keys) {
    Dialog d;
    for (char32_t key = 32; key < 256; ++key) {
        const bool expected = (key >= 48 && key <= 57) || key == 45 || key == 46;
        for (int box = 0; box < 3; ++box)
            EXPECT_EQ(d.sheet.KeyAllowed(box, key), expected) << static_cast<int>(key);
    }
    d.prompts.ExpectMessage("Invalid data type, please re-enter the data!");
    d.sheet.KeyRefused(Slope);
    EXPECT_EQ(d.prompts.lastTitle, "KNOWN ELECTRODE SLOPE");
}

TEST(KnownSlopeSheet, OkNeedsAllThreeBoxes) {
    const std::array<const char*, 3> full = {"-58.2", "25", " 77"};
    for (int missing = 0; missing < 3; ++missing) {
        Dialog d;
        for (int i = 0; i < 3; ++i)
            d.sheet.Edited(i, i == missing ? "" : full[static_cast<std::size_t>(i)]);
        d.prompts.ExpectMessage("Incomplete data input, please check.");
        EXPECT_FALSE(d.sheet.Ok());
        EXPECT_EQ(d.sheet.TakeFocus(), missing);
        EXPECT_EQ(d.state.KnownSlope + d.state.KnownSlopeTemp, "");
    }
    Dialog d;
    d.state.ReadingActive = true;
    for (int i = 0; i < 3; ++i)
        d.sheet.Edited(i, full[static_cast<std::size_t>(i)]);
    EXPECT_TRUE(d.sheet.Ok());
    EXPECT_EQ(Joined(d.state.KnownSlope, d.state.KnownSlopeTemp, d.sheet.TakeFocus(), d.state.ReadingActive),
              "-58.2|25|0|1");
    EXPECT_EQ(d.Boxes(), "-58.2|25| 77") << "the texts stay readable";
    d.sheet.Cancel();
    EXPECT_FALSE(d.state.ReadingActive);
}

}  // namespace
}  // namespace kelvo::test
