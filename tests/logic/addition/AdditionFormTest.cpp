#include "addition/AdditionForm.h"

#include <cstdlib>

#include "addition/AdditionRun.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

const AdditionMethod& Std = StandardAddition;
const AdditionMethod& Smp = SampleAddition;

/// Entries up to the measured potentials, with the results of the worked cases behind them.
const std::string StandardRoad = "0=50! 3=20! 9=1000! 14=80! 15=51! 1=25! ";
const std::string SampleRoad = "0=5! 3=100! 9=5! 14=120! 15=100! 1=25! ";

const char* const Pleas = "Data out of range, pleas re-enter";
const char* const Please = "Data out of range, please re-enter";
const char* const Failed = "Data out of range, please try again";
const char* const MissingStd = "Data missing, there are no value in some of the boxes, please complete";
const char* const MissingSmp = "Data missing, there are no values in some of the boxes, please complete";
const char* const ChangedData = "Some of the data have been changed, please check and re-calculate the result.";
const char* const Save = "? Would you like to save these data?";
const char* const Differs =
    "! Warning! there is more than 1°C difference between the sample and calibration temperature. This will increase the errors in your measurements. You are advised to make a new calibration using solutions at the same temperature as your sample.";
const char* const Calibrate =
    "? No calibration data for the selected ion, click on 'Yes' to do the calibration now, click on 'No' to type in the electrode slope and temperature";

/// Name, method and steps; the boxes looked at and what they show, what was said, where it leads.
using Row =
    std::tuple<const char*, const AdditionMethod&, std::string, const char*, const char*, std::string, const char*>;

void RunCases(const std::vector<Row>& rows) {
    for (const auto& [name, method, steps, boxes, shown, said, led] : rows) {
        SCOPED_TRACE(name);
        AdditionRun run(method, steps);
        EXPECT_EQ(run.Shown(boxes), shown);
        EXPECT_EQ(run.prompts.heard, said);
        EXPECT_EQ(run.Led(), led);
    }
}

TEST(AdditionForm, LeadsFromTheSampleToTheResult) {
    RunCases({
        {"the calibration's slope", Std, "", "11 12 13", "11=-58 12=25.0 13=77.0", "", "0 yellow 0"},
        {"expected ppm", Std, "0=50! 3=20!", "3 4 5 6 7", "3=20 4=1.05E-3 5=_5 6=400.00 7=2.11E-2", "", "9 yellow 9"},
        {"expected mol/L", Std, "0=50! 3! 4=0.00105!", "3 4 5 6", "3=19.95 4=0.00105 5=_5 6=399.00", "", "9 yellow 9"},
        {"a tenth has no tail", Std, "0=3! 3=20!", "5", "5=_0.3", "", "9 yellow 9"},
        {"standard in ppm", Std, "0=50! 3=20! 9=1000!", "8 9 10", "8=2.0 9=1000 10=5.26E-2", "", "14 yellow 14"},
        {"a typed volume stands", Std, "0=50! 3=20! 8=3! 9=1000!", "8", "8=3", "", "14 yellow 14"},
        {"or the button", Std, "1=25! 0=50! 3=20! 9=1000! 14=80! 15=51!", "2", "2=_77", "", "calc"},
        {"17.48 ppm", Std, StandardRoad + "calc", "16 17", "16=17.48 17=9.20E-4", Save, "calc"},
        {"71.67 ppm", Smp, SampleRoad + "calc", "16 17", "16=71.67 17=3.77E-3", Save, "calc"},
        {"no change: the standard is the sample", Smp, "0=1! 3=100! 8=10 9=100! 14=7! 15=7! 1=25! calc", "16",
         "16=100.00", Save, "calc"},
        {"the sample's temperature without potentials", Std, "1=25!", "2", "2=_77", "", "9 yellow 9"},
        {"the calibration's", Std, "12=20!", "13", "13=_68", "", "0 yellow 0"},
        {"°F first", Std, "2=77!", "1", "1=_25", "", "9 yellow 9"},
        {"an empty °C leads to °F", Std, "12= 12!", "13", "13=", "", "13 yellow 13"},
        {"\"New\"", Std, StandardRoad + "new", "0 8 11 14 15", "0= 8= 11= 14= 15=", "", "0 yellow 0"},
        {"one potential alone leads on", Std, "14=80! 1=25!", "2", "2=_77", "", "9 yellow 9"},
        {"any key in the ion box", Std, "key", "", "", "", "3 yellow 0"},
        {"Enter without an ion", Std, "none enter", "", "", MissingStd, "0 yellow 0"},
        {"\"Re-do\" does nothing", Std, "0=50! redo", "0", "0=50", "", "3 yellow 3"},
    });
}

TEST(AdditionForm, LimitsIncludeBothEnds) {
    // method, box, texts taken and refused
    const std::tuple<const AdditionMethod&, int, std::string, std::string> rows[] = {
        {Std, 0, "1 999", "0.99 999.1 -1 x"},
        {Std, 1, "0 99", "-0.1 99.1"},
        {Std, 2, "32 212.2", "31.9 212.3"},
        {Std, 3, "0.0001 99999", "0.00009 99999.1"},
        {Std, 4, "0.000001 99.99", "9E-7 100"},
        {Std, 8, "1 99 9.9", "0.9 99.1"},
        {Smp, 8, "10 1000", "9.9 1000.1"},
        {Std, 9, "0.0001 99999", "0 99999.1"},
        {Smp, 10, "0.00001 99.99", "0 100"},
        {Std, 11, "-99.99 99.99 0", "-100 100"},
        {Smp, 12, "0 99", "-1 99.01"},
        {Std, 13, "32 212.2", "31 213"},
        {Std, 14, "-999 999 600", "-999.1 1000"},
        {Std, 15, "-500 500", "-500.1 600"},
        {Smp, 15, "-500 500", "500.01"},
    };
    for (const auto& [method, box, taken, refused] : rows) {
        std::istringstream texts(taken + " then " + refused);
        std::string said;
        for (std::string text; texts >> text;) {
            if (text == "then") {
                said = &method == &Std ? Pleas : Please;
                continue;
            }
            AdditionRun run(method, "0=50 3=20! " + std::to_string(box) + "=" + text + "!");
            EXPECT_EQ(Joined(run.form.Text(box), run.prompts.heard), Joined(text, said));
            EXPECT_TRUE(said.empty() || run.form.TakeFocus() == box) << box << " " << text;
        }
    }
}

TEST(AdditionForm, AnswersWhatIsMissingOrCannotBe) {
    RunCases({
        {"no expected mol/L", Std, "3! 4!", "", "", MissingStd, "4 yellow 4"},
        {"no standard", Smp, "9! 10!", "", "", MissingSmp, "10 yellow 10"},
        {"no sample volume reads as 0", Std, "0!", "", "", Pleas, "0 yellow 0"},
        {"a suggestion is no entry", Std, "5!", "", "", "DATA MISTAKE", "0 yellow 0"},
        {"nor is a result", Smp, "16! 17!", "", "", "DATA MISTAKE|DATA MISTAKE", "0 yellow 0"},
        {"a standard of 0.00 ppm has no volume", Std, "0=50! 3=20! H 10=0.000001!", "8 9", "8= 9=", Failed,
         "10 yellow 9"},
        {"the first empty box leads", Std, "0=50! 3=20! 9=1000! 14=80! calc", "16", "16=", MissingStd, "1 yellow 1"},
        {"a suggestion comes from the expected value", Smp, "0=5! 8=50 9=5! 14=1! 15=2! 1=25 2=77 3=5 4=2.63E-4 calc",
         "16", "16=", MissingSmp, "3 yellow 3"},
        {"exactly one degree", Std, "12=15.1! 0=50! 3=20! 9=1000! 14=80! 15=51! 1=16.1!", "", "", "", "calc"},
        {"more than one", Std, "12=15.1! 0=50! 3=20! 9=1000! 14=80! 15=51! 1=16.2!", "2", "2=_61.16", Differs, "calc"},
        {"no calibration temperature reads as 0", Std, "12= 0=50! 3=20! 9=1000! 14=80! 15=51! 1=1.5!", "", "", Differs,
         "calc"},
        {"a slope of 0", Std, "11=0! " + StandardRoad + "calc", "0 14 16 17", "0=50 14=80 16= 17=", Failed, "calc"},
        {"a failure takes the earlier result away", Std, StandardRoad + "calc 11=0 calc", "0 15 16 17",
         "0=50 15=51 16= 17=", std::string(Save) + "|" + Failed, "calc"},
        {"no sample volume", Std, StandardRoad + "0= calc", "16", "16=", MissingStd, "0 yellow 0"},
        {"10^x overflows", Std, "11=0.01! " + StandardRoad + "15=500! calc", "15 16", "15=500 16=", Failed, "calc"},
    });
}

// The standard's 0.01 mol/L are 189.98 ppm: 379.96 / 114.438 = 3.32. At 40 °C S is −60.918: 2000 / 105.62 = 18.94.
TEST(AdditionForm, CalculateTakesWhatStandsInTheBoxes) {
    const std::string done = StandardRoad + "calc ", again = Save + std::string("|");
    RunCases({
        {"a slope beyond its limits", Std, StandardRoad + "11=-580 calc", "11 16", "11=-580 16=", Pleas, "11"},
        {"a volume of 0", Std, StandardRoad + "0=0 calc", "0 16", "0=0 16=", Pleas, "0"},
        {"an expected value that is no number", Std, StandardRoad + "3=x calc", "3 16", "3=x 16=", Pleas, "3"},
        {"a volume of 0 that was worked out", Std, "0=50! 3=0.0001! 9=99999! 14=80! 15=51! 1=25! calc", "8 16",
         "8=0.0 16=", Pleas, "8"},
        {"of the other method", Smp, SampleRoad + "8=9.9 calc", "16", "16=", Please, "8"},
        {"a refusal leaves the result before", Std, done + "11=-580 calc", "16", "16=17.48", again + Pleas, "11"},
        {"mol/L beside earlier ppm", Std, StandardRoad + "10=0.01 calc", "9 10 16", "9=189.98 10=0.01 16=3.32", Save,
         "calc"},
        {"ppm beside earlier mol/L", Std, StandardRoad + "9=189.98 calc", "9 10 16", "9=189.98 10=1.00E-2 16=3.32",
         Save, "calc"},
        {"the two against each other", Std, StandardRoad + "9=500 10=0.01 calc", "9 10 16",
         "9=500 10=0.01 16=", "DATA MISTAKE", "9"},
        {"the two together", Std, StandardRoad + "9=189.98 10=0.01 calc", "10 16", "10=0.01 16=3.32", Save, "calc"},
        {"an expected value", Std, StandardRoad + "4=0.00105 calc", "3 5 6", "3=19.95 5=_5 6=399.00", Save, "calc"},
        {"°F, and the warning that goes with it", Std, StandardRoad + "2=104 calc", "1 16", "1=_40 16=18.94",
         Differs + std::string("|") + Save, "calc"},
        {"no volume comes by itself", Std, StandardRoad + "8= 9=500 calc", "8 10 16", "8= 10=2.63E-2 16=", MissingStd,
         "8 yellow 8"},
    });
    AdditionRun hot(Std, "0=50! 3=20! 9=1000! 14=80! 15=51! 12=1E39 1=25!");
    EXPECT_EQ(Joined(hot.prompts.heard, hot.state.FileTemp), Failed + std::string("|25"));
    hot.state.FileTemp = std::string(45, '5');
    hot.form.Load();
    EXPECT_EQ(Joined(hot.Shown("11 12 13"), hot.Led(), hot.prompts.heard),
              "11=-58 12= 13=|12 yellow 12|" + std::string(Failed) + "|" + Pleas);
}

TEST(AdditionForm, CommentsByTheRatio) {
    // The result is 100 ppm: 11 times the expected value is D = 10. The height of the comment and the step taken: the
    // result is seen before the question.
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"100", "285|show |Good measurement", "As expected"},
        {"25.1", "285|show |Good measurement", "4.0 times the expected value"},
        {"25", "285|show |Acceptable measurement", "4.0 times the expected value"},
        {"400", "285|show |Acceptable measurement", "The expected value is 4.0 times the result"},
        {"1100", "285|show |Acceptable measurement", "The expected value is 11 times the result"},
        {"1101", "570|show |Please repeat the measurement with a new Expected Concentration value.",
         "The expected value is 11 times the result"},
    };
    for (const auto& [expected, said, ratio] : rows) {
        const AdditionRun run(Smp, std::string("0=1! 3=") + expected + "! 8=10 9=100! 14=7! 15=7! 1=25! calc");
        EXPECT_EQ(Joined(run.form.CommentHeight(), run.asked, run.form.Comment()), said);
        EXPECT_EQ(run.form.Ratio(), ratio);
    }
    for (const AdditionMethod* method : {&Std, &Smp}) {
        // The standard of the other direction: the result falls below 0.
        AdditionRun run(*method, "0=50! 3=20! 8=10 9=1! 14=51! 15=100! 1=25! calc");
        EXPECT_EQ(run.form.Comment(),
                  std::string("Bad measurement, please re-do the procedure") + (method == &Smp ? "." : ""));
        EXPECT_EQ(run.form.Text(16)[0], '-') << "and is shown all the same";
        run.prompts.yes = true;
        run.Perform("calc");
        EXPECT_EQ(run.asked, "show show save ");
    }
    const AdditionRun run(Std, "0=100! 3=0.5! 8=10 9=1000! 14=80! 15=22! 1=25! calc");
    EXPECT_EQ(Joined(run.form.Text(16), run.form.CommentHeight()), "10.00|560");
    EXPECT_EQ(Joined(RatioInWords(0.1, 2), RatioInWords(-1, 2), RatioInWords(1, 0)),
              "The expected value is 20 times the result||");
}

TEST(AdditionForm, WhatEmptiesWhat) {
    const std::string done = StandardRoad + "calc ";
    const std::string afterwards = Save + std::string("|") + ChangedData;
    RunCases({
        {"a box takes its partner and the result", Std, done + "3=", "3 4 16 17 9", "3= 4= 16= 17= 9=1000", Save,
         "calc yellow 3"},
        {"°F takes °C", Std, done + "13=", "12 13 16", "12= 13= 16=", Save, "calc yellow 13"},
        {"a potential has no partner", Std, done + "14=", "14 15 16", "14= 15=51 16=", Save, "calc yellow 14"},
        {"a changed box tells at Enter", Std, done + "14=81 14!", "16", "16=17.48", afterwards, "15 yellow 15"},
        {"where the step leads nowhere the button has the focus", Std, done + "16!", "16", "16=17.48",
         afterwards + "|DATA MISTAKE", "calc"},
        {"once", Std, done + "14=81! 15!", "16", "16=17.48", afterwards, "calc"},
        {"a click into the standard drops its volume", Std, done + "9?", "8 9 16", "8= 9=1000 16=", Save,
         "calc yellow 9"},
        {"a click elsewhere does not", Std, done + "3? 14?", "8 16", "8=2.0 16=17.48", Save, "calc"},
        {"\"New\" takes the result", Std, done + "new", "16 17", "16= 17=", Save, "0 yellow 0"},
        {"and Enter works it out anew", Std, done + "10? 9=500!", "8", "8=4.0", Save, "14 yellow 14"},
        {"mol/L with two places", Std, done + "10? 10=0.0211!", "8 9", "8=4.99 9=400.87", Save, "11 yellow 11"},
    });
}

TEST(AdditionForm, TheSlopeOfTheIonIsConsultedAfterMolar) {
    const std::string noSlope = "No calibration data available, type in the slope and temperature";
    const std::tuple<const char*, const char*, std::string, const char*, const char*, bool> rows[] = {
        {"-57.5", "", "", "11=-57.5 12=24.0 13=75.2", "14 yellow 14", true},
        {"", "11= 12= ", noSlope, "11= 12= 13=", "11 yellow 11", false},
        {"0", "", "", "11=-58 12=25.0 13=77.0", "11 yellow 11", false},
    };
    for (const auto& [known, before, said, shown, led, onLine] : rows) {
        AdditionRun run(Std);
        run.state.IonCali[AdditionRun::Fluoride] = {known, "24.0", "75.2", ""};
        run.Perform(std::string(before) + "0=50! 3=20!");
        EXPECT_FALSE(run.form.OnLineOffered());
        run.Perform("10=0.05!");
        EXPECT_EQ(Joined(run.prompts.heard, run.Shown("11 12 13"), run.Led(), run.form.OnLineOffered()),
                  Joined(said, shown, led, onLine));
    }
    EXPECT_EQ(AdditionRun(Std, "Custom 0=50! 3=20! 10=0.05!").prompts.heard, "") << "the custom ion has no memory";
}

TEST(AdditionForm, WithoutASlopeTheIonAsks) {
    AdditionRun run(Std, StandardRoad + "calc");
    run.prompts.heard.clear();
    run.state.CaliSlope = 0;
    run.form.Load();
    EXPECT_EQ(Joined(run.Led(), run.form.Date(), run.Shown("0 14 16")), "11 yellow 11|24/11/2026 09:05|0= 14= 16=");
    run.Perform("0=50! Cl");
    EXPECT_EQ(run.prompts.heard, Calibrate);
    EXPECT_EQ(Joined(run.Shown("0"), run.Led(), run.form.IonName(), run.form.CommentHeight()),
              "0=|11 yellow 11|Cl|280");
    run.prompts.yes = true;
    run.Perform("0=50 F");
    EXPECT_EQ(run.asked + run.Shown("0"), "show calibrate 0=50");

    // method, slope, ion and interface of the setup, ion chosen; what leads at first, the ion that stands then
    const std::tuple<const AdditionMethod&, float, std::int16_t, std::int16_t, const char*, const char*> others[] = {
        {Smp, 0.f, AdditionRun::Fluoride, 2, "Cl", "11 yellow 11|F|"},
        {Smp, 0.f, NoIon, 2, "Cl", "11 yellow 11|Cl|"},
        {Std, -58.f, 0, 2, "Cl", "0 yellow 0|Cl|"},
        {Std, -58.f, 0, 3, "Cl", "0 yellow 0|Ag|"},
        {Std, -58.f, 30, 2, "none", "11 yellow 11||"},  // an ion that no list holds is none
    };
    for (const auto& [method, slope, ion, interface, chosen, then] : others) {
        AdditionRun other(method);
        other.state.CaliSlope = slope;
        other.state.IonIndex = ion;
        other.state.InterfaceKind = interface;
        other.form.Load();
        const std::string led = other.Led();
        other.Perform(chosen);
        EXPECT_EQ(Joined(led, other.form.IonName(), other.prompts.heard), then);
    }
}

TEST(AdditionForm, TakesReadingsAndTemperatures) {
    AdditionRun run(Std, StandardRoad + "calc");
    run.form.TakePotential(14, "80", false);
    EXPECT_EQ(run.form.Text(16), "17.48") << "a reading given up changes nothing";
    run.form.TakePotential(14, "79.50", true);
    EXPECT_EQ(Joined(run.Shown("14 16"), run.form.Comment(), run.Led(), run.form.CommentHeight(), run.form.Ratio()),
              "14=79.50 16=||15 yellow 15|285|");
    run.form.ShowTemperature("24.6", "76.3");
    run.form.TakePotential(15, "600.00", true);
    EXPECT_EQ(run.Shown("1 2 15") + run.Led(), "1=24.6 2=76.3 15=600.00calc");
    run.Perform("calc");
    EXPECT_EQ(run.Shown("15 16"), "15=600.00 16=-40.00") << "no limit for what was read";
    run.form.ShowTemperature("-4.5", "23.9");
    run.form.ShowTemperature(" ", "32.0");
    run.Perform("calc");
    EXPECT_TRUE(run.prompts.heard.ends_with(Save + std::string("|") + Pleas) && run.form.TakeFocus() == 1);
    run.form.TakePotential(14, "79.00", true, "the value is 5 s old");
    const std::string cold = "-4.5 °C is outside 0 to 99 °C: type the temperature.";
    EXPECT_EQ(run.form.Status(), "79.00 mV was no live reading when it was taken: the value is 5 s old. " + cold);
    run.Perform("14=80");
    EXPECT_EQ(run.form.Status(), cold);
}

/// What is said of a result with its deviation, share and margin, without a calibration's scatter.
std::string Assumed(const char* ppm, const char* u, const char* percent, const char* margin) {
    return std::string(ppm) + " ± " + u + " ppm (" + percent + " %, one standard deviation; 95 %: ± " + margin +
           " ppm), from 0.10 mV in each potential (assumed), 1 % in each volume (assumed) and a slope taken as exact.";
}

TEST(AdditionForm, SaysHowGoodItIs) {
    const std::string little = " The addition changed the potential by ";
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"nothing yet", "", ""},
        {"the result", StandardRoad + "calc", Assumed("17.48", "0.27", "1.6", "0.53")},
        {"a small change", "0=50! 3=20! 9=1000! 14=80! 15=71! 1=25! calc",
         Assumed("82.20", "1.74", "2.1", "3.42") + little + "only 9.0 mV, less than 10 mV: it says little."},
        {"10 mV are enough", "0=50! 3=20! 9=1000! 14=80! 15=70! 1=25! calc", Assumed("73.15", "1.48", "2.0", "2.91")},
        {"a large one", "0=50! 3=20! 9=1000! 14=80! 15=-37! 1=25! calc",
         Assumed("0.3731", "0.0055", "1.5", "0.0108") + little + "117.0 mV, more than two slopes: it says little."},
        {"two slopes are not too many", "0=50! 3=20! 9=1000! 14=80! 15=-36! 1=25! calc",
         Assumed("0.3883", "0.0057", "1.5", "0.0112")},
        {"nor are they at the sample's temperature", "12=20! 0=50! 3=20! 9=1000! 14=80! 15=-37! 1=25! calc",
         Assumed("0.4036", "0.0059", "1.5", "0.0116")},
        {"a bad one has no deviation", "0=50! 3=20! 8=10 9=1! 14=51! 15=100! 1=25! calc", ""},
        {"an entry after it", StandardRoad + "calc 14=81",
         "The result is that of earlier entries: Calculate works it out anew."},
        {"a comma", "0=1,5", "\"1,5\" counts as 1: only the number at its head is read."},
        {"no ion", "none 3=20!", "No ion is selected: mol/L is worked out as 0."},
        {"another ion", "3=20! Cl",
         "The mol/L of the expected concentration are not those of its ppm for Cl: press Enter in the box that holds."},
        {"a standard in two units", "0=50! 3=20! 9=1000! 10=0.01",
         "The mol/L of the standard are not those of its ppm for F: press Enter in the box that holds."},
        {"another ion's slope", "Cl 0=50! 3=20!", "The slope is that of the calibration for F, not for Cl."},
        {"a slope of 0", "11=0!", "A slope of 0 gives no result."},
        {"a volume at its limit", "8=99", ""},
        {"too hot", "1=99.5 2=211.1", "99.5 °C is outside 0 to 99 °C: type the temperature."},
        {"a dead sensor", "1=-4.5 2=23.9", "-4.5 °C is outside 0 to 99 °C: type the temperature."},
        {"°F that is not the °C", "12=20",
         "The temperature of 20 °C counts; its °F box does not say the same. Press Enter in the °C box."},
        {"a dropped volume", StandardRoad + "9?",
         "The volume of the standard will be worked out from its concentration. Type it again if it was measured."},
        {"a volume beyond its limits", "0=999! 3=99999! 9=100!",
         "A volume of 1997980 mL of standard is outside 1 to 99 mL: a standard of another strength fits better."},
    };
    for (const auto& [name, steps, said] : rows) {
        EXPECT_EQ(AdditionRun(Std, steps).form.Status(), said) << name;
    }
}

TEST(AdditionForm, TheScatterOfTheCalibrationCounts) {
    // Three points about −112 − 58·LogC: residuals 1, −2, 1 mV, so s² = 6, and Sxx = 2: s/√Sxx = √3. One degree of
    // freedom: t is 12.7062.
    AdditionRun run(Std);
    run.state.CaliLogC = {0, -1, -2, -3};
    run.state.CaliPpm = {0, 1900, 190, 19};
    const std::string scatter = "2.45 mV in each potential (scatter of the calibration in use about its line)",
                      assumed = "0.10 mV in each potential (assumed)",
                      less = "0.10 mV in each potential (assumed: the calibration in use scatters less)",
                      exact = "a slope taken as exact.";
    const std::tuple<int, std::vector<float>, const char*, std::string, std::string> rows[] = {
        {3, {0, -53, 2, 63}, "F 11=-58 12=25!", scatter, "± 1.73 mV/dec in the slope (one standard deviation)."},
        {3, {0, -53, 2, 63}, "F 11=-58.1! 12=25!", scatter, exact},
        {3, {0, -53, 2, 63}, "Cl 11=-58 12=25!", assumed, exact},
        {2, {0, -53, 2, 63}, "F 11=-58 12=25!", assumed, exact},
        // On the line: no better than a potential can be read.
        {3, {0, -54, 4, 62}, "F 11=-58 12=25!", less, "± 0.071 mV/dec in the slope (one standard deviation)."},
    };
    for (const auto& [points, potentials, slope, said, ofSlope] : rows) {
        run.state.CaliPoints = static_cast<std::int16_t>(points);
        run.state.CaliE = potentials;
        run.Perform("new " + std::string(slope) + " " + StandardRoad + "calc");
        const std::string status = run.form.Status();
        EXPECT_NE(status.find("from " + said + ", 1 % in each volume (assumed) and " + ofSlope), std::string::npos)
            << status;
    }
    run.state.CaliE = {0, -53, 2, 63};
    run.Perform("calc");
    EXPECT_TRUE(run.form.Status().starts_with("17.48 ± 3.57 ppm (20.4 %, one standard deviation; 95 %: ± 45.23 ppm)"));
    const std::string doubt = "alibration doubtful: a sample is uncertain by -76.0 to +316.5 % (95 %)";
    EXPECT_NE(run.form.Status().find(" C" + doubt), std::string::npos) << run.form.Status();
    EXPECT_TRUE(run.form.Facts().Get(fact::Remark).starts_with("c" + doubt));
    run.Perform("11=-58.1! calc");
    EXPECT_EQ(run.form.Facts().Get(fact::Remark), "") << "a slope of its own";
}

TEST(AdditionForm, KeysAndFiles) {
    AdditionRun run(Std);
    std::string taken;
    for (const char key : std::string("\b.-/09:Ee,+ "))
        if (run.form.KeyAllowed(0, static_cast<char32_t>(key))) taken += key;
    EXPECT_EQ(taken, "\b.-09E");
    run.form.KeyRefused(0);
    EXPECT_EQ(Joined(run.prompts.heard, run.form.KeepsRefusedKeys()), "Wrong data type, please re-enter|1");
    EXPECT_FALSE(run.form.HoldsEntries()) << "the calibration's slope is none";
    run.Perform(StandardRoad + "calc");
    EXPECT_TRUE(run.form.HoldsEntries());
    const MethodDump dump = run.form.Dump();
    AdditionRun again(Std);
    again.form.Take(dump);
    EXPECT_EQ(MethodDumpBytes(again.form.Dump()), MethodDumpBytes(dump));
    EXPECT_EQ(Joined(again.form.Ratio(), again.Led(), again.form.OnLineOffered()),
              "The expected value is 1.1 times the result|calc|1");
    EXPECT_EQ(again.form.Status(), "");
    MethodDump odd = dump;
    odd.Box[16] = "17.49";
    again.form.Take(odd);
    EXPECT_EQ(Joined(again.form.ResultIsOfBoxes(), again.form.Status()),
              "0|The result of this file does not follow from its boxes: Calculate works it out anew.");
    again.Perform("calc");
    EXPECT_EQ(Joined(again.Shown("16"), again.form.ResultIsOfBoxes()), "16=17.48|1");
    for (const auto& [box, text] : {std::pair{15, "1E39"}, {15, "-750"}, {11, "-580"}}) {
        odd.Box[static_cast<std::size_t>(box)] = text;
        again.form.Take(odd);
        again.Perform("calc");
    }
    EXPECT_EQ(again.prompts.heard, Joined(Save, Pleas, Save, Pleas));
    MethodDump half = dump;
    half.Box[14].clear();
    half.surplus = true;
    again.form.Take(half);
    EXPECT_EQ(Joined(again.Led(), again.form.Status().substr(0, 40)),
              "14 yellow 14|The file holds more than there are boxes");
}

}  // namespace
}  // namespace kelvo::test
