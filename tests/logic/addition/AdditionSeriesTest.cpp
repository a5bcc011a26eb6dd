#include "addition/AdditionSeries.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>
#include <tuple>

#include "addition/AdditionRun.h"
#include "addition/SeriesForm.h"
#include "support/Joined.h"
#include "text/Number.h"

namespace kelvo::test {
namespace {

AdditionSeries Standard(std::vector<double> ml, std::vector<double> mv) {
    AdditionSeries series;
    series.startMl = 50;
    series.standardPpm = 1000;
    series.addedMl = std::move(ml);
    series.mv = std::move(mv);
    series.slope = -58;
    return series;
}

/// Worked out outside the program: the squares over c by golden section, their reach by halving.
TEST(AdditionSeries, HasTheConcentrationAndTheIntervalOfItsSquares) {
    AdditionSeries calibrated = Standard({1, 2, 3, 4}, {44.6, 27.7, 11.0, -1.5, -11.0});
    calibrated.scatter = {0.3, 0.2, 3};
    AdditionSeries fitted = Standard({1, 1, 2, 4, 8}, {44.6, 27.7, 17.7, 6.0, -6.8, -19.7});
    fitted.fitSlope = true;
    AdditionSeries sample = Standard({10, 20, 30}, {79.5, 48.0, 31.7, 23.7});
    sample.sampleAdded = true;
    sample.standardPpm = 5;
    const std::tuple<AdditionSeries, double, double, double, double, double, int> rows[] = {
        {Standard({1, 2, 3, 4}, {44.6, 27.7, 11.0, -1.5, -11.0}), 20.073524, 19.504816, 20.659097, 0.143113, 1.416040,
         35},
        {calibrated, 20.073524, 19.300769, 20.878192, 0.143113, 1.903193, 24},
        {fitted, 19.692474, 18.477188, 20.989053, 0.150830, 2.763651, 8},
        {sample, 80.119604, 78.343419, 81.934963, 0.128503, 1.005857, 10},
    };
    for (const auto& [series, ppm, low, high, s, u, degrees] : rows) {
        const auto result = WorkOutSeries(series);
        ASSERT_TRUE(result && result->interval) << ppm;
        EXPECT_NEAR(result->ppm, ppm, 1e-5);
        EXPECT_NEAR(result->interval->low, low, 1e-4);
        EXPECT_NEAR(result->interval->high, high, 1e-4);
        EXPECT_NEAR(result->residualDeviation, s, 1e-5);
        EXPECT_NEAR(result->budget.Combined(), u, 1e-4);
        EXPECT_EQ(result->budget.Freedom(), degrees);
        const GranPlot plot = GranPlotOf(series, *result);
        const double onAxis = series.sampleAdded ? -series.standardPpm * series.startMl / ppm
                                                 : -ppm * series.startMl / series.standardPpm;
        EXPECT_NEAR(plot.meetsAxisAt, onAxis, 1e-5);
        for (std::size_t i = 0; i < plot.ml.size(); ++i)
            EXPECT_NEAR(plot.ordinate[i] / (plot.atZero + plot.perMl * plot.ml[i]),
                        std::pow(10.0, result->residuals[i] / result->slope), 1e-9);
    }
    EXPECT_NEAR(WorkOutSeries(fitted)->slope, -57.550226, 1e-5);
}

/// With one addition a series says what the form of the method says, to the last digit.
TEST(AdditionSeries, OfOneIsThatOfTheForm) {
    for (const bool sampleAdded : {false, true}) {
        AdditionSeries one = Standard({sampleAdded ? 30.0 : 2.0}, {80, 51});
        one.sampleAdded = sampleAdded;
        one.standardPpm = sampleAdded ? 5 : 1000;
        one.scatter = {0.4, 0.2, 3};
        const double startMl = 50, addedMl = one.addedMl[0];
        const Addition form{.sampleMl = sampleAdded ? addedMl : startMl,
                            .standardMl = sampleAdded ? startMl : addedMl,
                            .standardPpm = one.standardPpm,
                            .slope = -58,
                            .calibrationCelsius = 25,
                            .sampleCelsius = 25,
                            .before = 80,
                            .after = 51};
        const AdditionResult known =
            WorkOut(form, sampleAdded ? SampleAdditionTerms : StandardAdditionTerms, one.scatter);
        const auto result = WorkOutSeries(one);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->ppm, known.ppm);
        EXPECT_EQ(result->interval->high, known.ppm + known.margin);
        EXPECT_EQ(result->interval->low, known.ppm - known.margin);
    }
    EXPECT_FALSE(WorkOutSeries(Standard({2}, {51, 80}))) << "the potential goes the wrong way";
    EXPECT_FALSE(WorkOutSeries(Standard({2, 2}, {51, 80, 90})));
}

TEST(AdditionSeries, TellsNoIntervalWhereItWouldNotHold) {
    EXPECT_EQ(WorkOutSeries(Standard({2, 2}, {44.6, 22, 10.0}))->why,
              "two additions tell too little of the scatter: a third does, or a calibration of four standards");
    AdditionSeries fitted = Standard({1, 2, 3}, {44.6, 27.7, 11.0, -1.5});
    fitted.fitSlope = true;
    EXPECT_EQ(WorkOutSeries(fitted)->why,
              "three additions tell no scatter beside the slope: a fourth does, or a calibration of four standards");
    fitted.scatter = {0.3, 0, 3};
    EXPECT_TRUE(WorkOutSeries(fitted)->interval);
    // An addition that hardly changes anything bounds nothing when the slope is to follow from it as well.
    AdditionSeries little = Standard({0.01, 0.01, 0.01, 0.01}, {44.6, 44.3, 44.5, 44.2, 44.3});
    little.fitSlope = true;
    const auto none = WorkOutSeries(little);
    EXPECT_TRUE(!none || !none->interval);
}

/// 95 % of the intervals are to hold the truth; with 400 of a kind two deviations are 2.2 %.
TEST(AdditionSeries, IntervalsHoldTheTruth) {
    std::mt19937_64 source(1);
    std::normal_distribution<double> normal;
    for (const auto& [sampleAdded, fitSlope, additions] :
         {std::tuple{false, false, 3}, {false, true, 5}, {true, false, 5}, {true, true, 4}}) {
        constexpr int Times = 400;
        constexpr double Truth = 20, Slope = -58, Scatter = 0.5, Ml = 0.01;
        int held = 0, told = 0;
        for (int time = 0; time < Times; ++time) {
            AdditionSeries series;
            series.sampleAdded = sampleAdded;
            series.fitSlope = fitSlope;
            series.startMl = 50;
            series.slope = Slope;
            const AdditionPlan plan = PlanAdditions(series, Truth, additions);
            series.standardPpm = plan.standardPpm;
            series.addedMl = plan.addedMl;
            const double start = 50 * (1 + Ml * normal(source)), scale = 1 + Ml * normal(source);
            double ml = 0;
            for (int i = 0; i <= additions; ++i) {
                if (i > 0) ml += scale * series.addedMl[static_cast<std::size_t>(i - 1)];
                const double amount =
                    sampleAdded ? series.standardPpm * start + Truth * ml : Truth * start + series.standardPpm * ml;
                series.mv.push_back(100 + Slope * std::log10(amount / (start + ml)) + Scatter * normal(source));
            }
            const auto result = WorkOutSeries(series);
            if (!result || !result->interval) continue;
            ++told;
            held += result->interval->low <= Truth && Truth <= result->interval->high;
        }
        EXPECT_GT(told, 0.95 * Times);
        EXPECT_NEAR(static_cast<double>(held) / told, 0.95, 0.03) << sampleAdded << fitSlope << additions;
    }
}

TEST(AdditionSeries, APlanChangesThePotentialBySteps) {
    AdditionSeries series = Standard({}, {});
    const std::tuple<bool, double, double, int, const char*> rows[] = {
        {false, 0, 20, 5, ""},
        {false, 1000, 20, 3, ""},
        {false, 30, 20, 3, "the standard is too weak"},
        {false, 100000, 20, 3, "the smallest addition is below"},
        {true, 0, 20, 3, ""},
        {true, 10, 20, 5, "an addition changes the potential by 2.8 mV only"},
    };
    for (const auto& [sampleAdded, standard, expected, additions, words] : rows) {
        series.sampleAdded = sampleAdded;
        series.standardPpm = standard;
        const AdditionPlan plan = PlanAdditions(series, expected, additions);
        EXPECT_EQ(plan.words.substr(0, std::string(words).size()), words) << plan.words;
        EXPECT_EQ(plan.words.empty(), std::string(words).empty()) << plan.words;
        if (!plan.words.empty()) continue;
        ASSERT_EQ(plan.addedMl.size(), static_cast<std::size_t>(additions));
        double ml = 0, before = sampleAdded ? plan.standardPpm : expected;
        for (const double added : plan.addedMl) {
            ml += added;
            const double seen =
                (sampleAdded ? plan.standardPpm * 50 + expected * ml : expected * 50 + plan.standardPpm * ml) /
                (50 + ml);
            EXPECT_NEAR(58 * std::log10(seen / before), plan.stepMv, 1e-6);
            before = seen;
        }
        EXPECT_TRUE(plan.stepMv >= 15 && plan.stepMv <= 30) << plan.stepMv;
    }
}

/// The boxes of a form, "0=50 19=44.6", and what is told.
SeriesOutcome OutcomeOf(SeriesForm& form, const std::string& boxes) {
    std::istringstream words(boxes);
    for (std::string word; words >> word;)
        form.Edited(std::stoi(word), word.substr(word.find('=') + 1));
    return form.Outcome();
}

TEST(SeriesForm, TellsWhatIsMissingAndWhatIsWrong) {
    ScriptedPrompts prompts;
    const std::string whole = "0=50 1=1000 2=-58 19=44.6 9=1 20=27.7 10=2 21=11.0 11=3 22=-1.5 12=4 23=-11 ";
    const std::pair<std::string, const char*> rows[] = {
        {"", "The first volume is missing."},
        {"0=50 1=1000 2=-58 19=44.6", "The volume of addition 1 is missing."},
        {"0=50 1=1000 2=-58 19=44.6 9=1", "The potential after addition 1 is missing."},
        {whole + "21=", "The potential after addition 2 is missing."},
        {whole + "10=", "The volume of addition 2 is missing."},
        {whole + "2=", "The slope is missing."},
        {whole + "2=0", "The slope is not 0."},
        {whole + "0=0", "The first volume is out of range, 0.1 to 10000."},
        {whole + "9=1,5", "The volume of addition 1 is no number: type a point for the comma."},
        {whole + "19=-3000", "The potential before the additions is out of range, -2000 to 2000."},
        {whole + "20=90 21=120 22=130 23=140",
         "No concentration explains these potentials: look at their order, and at the sign of the slope."},
        {whole, "20.07 ppm, 19.50 to 20.66 (95 %, t 2.03, 35 degrees of freedom)"},
        {whole + "4=10 5=2 6=0.1 8=200",
         "180.7 ppm, 174.7 to 186.9 (95 %, t 2.02, 44 degrees of freedom); recovery 90.4 %"},
        {whole + "13=5", "20.07 ppm, 19.50 to 20.66 (95 %, t 2.03, 35 degrees of freedom)"},
    };
    for (const auto& [boxes, line] : rows) {
        SeriesForm form(prompts);
        EXPECT_EQ(OutcomeOf(form, boxes).Line(), line) << boxes;
    }
    SeriesForm form(prompts);
    const SeriesOutcome outcome = OutcomeOf(form, whole + "4=10 5=2");
    EXPECT_EQ(outcome.Facts("25").Get(fact::Additions), "44.6 1 27.7 2 11 3 -1.5 4 -11");
    EXPECT_EQ(outcome.Facts("25").Get(fact::Remark), "4 additions; blank 2 ppm subtracted; dilution 10");
    EXPECT_EQ(OutcomeOf(form, "20=44 21=43.4 22=43 23=42.5").Remarks(),
              "all additions together changed the potential by 2.1 mV only, less than 10 mV: they say little");
    form.FitSlope(true);
    EXPECT_EQ(OutcomeOf(form, "22= 23=").Line(), "The slope follows from three additions on.");
}

TEST(SeriesForm, BeginsWithItsMethodKeepsItsFileAndPlans) {
    AdditionRun run(StandardAddition, "0=50! 3=20! 9=1000! 14=80! 15=51! 1=30!");
    const SeriesStart start = run.form.Series();
    ScriptedPrompts prompts;
    SeriesForm form(prompts);
    form.Begin(start);
    EXPECT_EQ(
        Joined(form.Text(SeriesForm::StartMl), form.Text(SeriesForm::StandardPpm), form.Text(SeriesForm::Slope),
               form.Text(SeriesForm::FirstMl), form.Text(SeriesForm::FirstMv), form.Text(SeriesForm::FirstMv + 1)),
        "50|1000|-58.97|2.0|80|51")
        << "the slope is that at the sample's temperature";
    EXPECT_FALSE(form.HoldsEntries());
    EXPECT_EQ(form.Plan("0"), "A plan is for 1 to 10 additions.");
    EXPECT_EQ(form.Plan("3"), "Each addition changes the potential by about 20 mV.");
    EXPECT_EQ(form.NextPotential(), SeriesForm::FirstMv + 2);
    EXPECT_EQ(
        Joined(form.Text(SeriesForm::FirstMl), form.Text(SeriesForm::FirstMl + 2), form.Text(SeriesForm::FirstMl + 3)),
        "1.24|7.72|");
    form.TakePotential(SeriesForm::FirstMv + 2, "30");
    EXPECT_TRUE(form.HoldsEntries());

    SeriesForm other(prompts);
    other.Begin(start);
    EXPECT_EQ(other.Take(form.Bytes()), "");
    EXPECT_EQ(other.Bytes(), form.Bytes());
    SeriesStart samples;
    samples.sampleAdded = true;
    other.Begin(samples);
    const std::string before = other.Bytes();
    for (const auto& [bytes, told] :
         {std::pair<std::string, const char*>{"[]", "it is no file of several additions"},
          {form.Bytes(), "it is one of the other method"},
          {R"({"format":"kelvo-additions","version":2})", "it is of a newer version of this program"}})
        EXPECT_EQ(other.Take(bytes), told);
    EXPECT_EQ(other.Bytes(), before);
}

}  // namespace
}  // namespace kelvo::test
