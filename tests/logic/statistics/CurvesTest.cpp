#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <tuple>
#include <vector>

#include "statistics/CurvePrediction.h"
#include "statistics/JoinedLines.h"
#include "statistics/Linearity.h"
#include "statistics/Norris.h"
#include "statistics/OffsetLine.h"
#include "statistics/Parabola.h"

namespace kelvo {
namespace {

// The reference figures of the curves come from exact fractions and nested intervals in another language.

TEST(ParabolaTest, HasTheFiguresOfACalculationInFractions) {
    const auto norris = Parabola::Of(NorrisX, NorrisY);
    EXPECT_NEAR(norris->a / -2.0634314949706342e-06, 1, 1e-9);
    EXPECT_NEAR(norris->b / 1.004006324191002, 1, 1e-12);
    EXPECT_NEAR(norris->c / -0.4488851630574572, 1, 1e-10);
    EXPECT_NEAR(norris->residualSquares / 25.291153532179816, 1, 1e-12);
    EXPECT_NEAR(MandelTest(NorrisX, NorrisY)->f, 1.730489866874484, 1e-8);
    EXPECT_FALSE(MandelTest(NorrisX, NorrisY)->Significant());
    EXPECT_FALSE(Parabola::Of(Values{1, 2, 2, 1}, Values{1, 2, 3, 4})) << "two different x";
    EXPECT_FALSE(Parabola::Of(Values{1, 2, 3}, Values{1, 2})) << "unequal lengths";
    EXPECT_FALSE(Parabola::Of(Values{0, 1, 1e200}, Values{1, 2, 3})) << "beyond a double";
    const auto three = Parabola::Of(Values{1, 2, 4}, Values{1, 3, 5});
    EXPECT_EQ(three->residualDeviation, 0) << "not told, but no NaN";
    EXPECT_FALSE(PredictFromCurve(*three, {1, 4}, Values{2}, 2));
}

// ISO 8466-2 worked: eight standards, s 3.0192 about y = −2.4583·x² + 86.280·x − 2.1964; t of five degrees 2.5706.
const Values CurvedX = {1, 2, 3, 4, 5, 6, 7, 8}, CurvedY = {83, 157, 238, 301, 370, 425, 483, 530};

TEST(CurvePredictionTest, AgreesWithTheFormulaAndLooksForTheLimitsOnTheCurve) {
    const auto curve = Parabola::Of(CurvedX, CurvedY);
    EXPECT_NEAR(curve->residualDeviation, 3.0191846896929295, 1e-9);
    const auto one = PredictFromCurve(*curve, {1, 8}, Values{200}, 2);
    EXPECT_NEAR(one->x, 2.5251819707459155, 1e-9);
    EXPECT_NEAR(one->deviation, 0.04530842196749747, 1e-9);
    EXPECT_NEAR(one->low, 2.4089266548331136, 1e-9);
    EXPECT_NEAR(one->high, 2.641997458325627, 1e-9);
    const auto three = PredictFromCurve(*curve, {1, 8}, Values{399, 400, 401}, 2);
    EXPECT_NEAR(three->x, 5.534187369834589, 1e-9);
    EXPECT_NEAR(three->deviation, 0.03918737936840844, 1e-9);
    EXPECT_NEAR(three->high, 5.6348811858328105, 1e-9);
    EXPECT_TRUE(three->readings == 3 && !three->scattersMore);
    // 20 is more than six times s: the readings' own t of two degrees, 4.3027, and 20/√3.
    const auto wild = PredictFromCurve(*curve, {1, 8}, Values{380, 400, 420}, 2);
    EXPECT_TRUE(wild->scattersMore);
    EXPECT_NEAR(wild->high - wild->low, 2 * 4.3027 * 20 / std::sqrt(3.0) / 59.07, 0.02);
    EXPECT_FALSE(PredictFromCurve(*curve, {1, 8}, Values{200}, 0.1)) << "no end within reach";
    EXPECT_FALSE(PredictFromCurve(*curve, {1, 8}, Values{531}, 2)) << "above the points";
    EXPECT_FALSE(PredictFromCurve(*curve, {1, 8}, Values{81}, 2)) << "below the points";
    EXPECT_FALSE(PredictFromCurve(*curve, {1, 20}, Values{200}, 2)) << "it turns at 17.5";
}

TEST(OffsetLineTest, FindsTheOffsetWithItsIntervalAndTest) {
    const Values x = {-5, -4.5, -4, -3, -2}, y = {134.6, 120.2, 99.8, 45.3, -12.0};
    const auto fit = OffsetLine::Of(x, y);
    const std::tuple<const char*, double, double> rows[] = {
        {"c", fit->c, 1.9754699088931785e-05},
        {"slope", fit->slope, -57.954865370256655},
        {"intercept", fit->intercept, -127.90507557509815},
        {"residual squares", fit->residualSquares, 0.46683479773495795},
        {"F", fit->F(), 645.0763535330807},
        {"deviation of the slope", fit->SlopeDeviation(), 0.4345548843478326},
        {"deviation of the intercept", fit->InterceptDeviation(), 1.2389646283451463},
        {"lowest c", fit->CInterval()->low, 1.472816228847192e-05},
        {"highest c", fit->CInterval()->high, 2.581742187002983e-05},
        {"x of 120", PredictFromCurve(*fit, {-5, -2}, Values{120}, 2)->x, -4.481190850773891},
        {"its deviation", PredictFromCurve(*fit, {-5, -2}, Values{120}, 2)->deviation, 0.015420465375027484},
        {"low", PredictFromCurve(*fit, {-5, -2}, Values{120}, 2)->low, -4.549552224634879},
        {"high", PredictFromCurve(*fit, {-5, -2}, Values{120}, 2)->high, -4.416266711734002}};
    for (const auto& [what, value, outside] : rows)
        EXPECT_NEAR(value / outside, 1, 1e-6) << what;
    EXPECT_TRUE(fit->Significant());
    const auto straight = OffsetLine::Of(x, Values{160, 132, 103, 45, -12});
    EXPECT_FALSE(straight->Significant());
    EXPECT_EQ(straight->CInterval()->low, 0);
    EXPECT_LT(straight->CInterval()->high, 1e-5);
    EXPECT_FALSE(OffsetLine::Of(Values{-4, -3, -2, -2}, Values{1, 2, 3, 4})) << "three different x";
    EXPECT_FALSE(OffsetLine::Of(Values{-5, -4, -3, -2}, Values{1, 1, 1, 100})) << "level but for the highest";
}

TEST(JoinedLinesTest, TellsTheScatterOfRepeatedPointsAlone) {
    // Means 50, 110 and 160 with s² = 12/3; 80 stands in the middle of the first two: t 3.1824 of three degrees,
    // ±3.1824·√(4·(1 + 1/4·1/2 + 1/4·1/2)) off a slope of 60 below.
    const Values x = {3, 3, 2, 2, 1, 1}, y = {48, 52, 109, 111, 159, 161};
    const auto lines = JoinedLines::Of(x, y);
    EXPECT_NEAR(lines->Error().squares, 12, 1e-12);
    EXPECT_EQ(lines->Error().freedom, 3);
    const auto told = lines->Predict(Values{80});
    EXPECT_NEAR(told->x, 2.5, 1e-12);
    EXPECT_NEAR(told->deviation, std::sqrt(5.0) / 60, 1e-12);
    EXPECT_NEAR(told->high, 2.5 + 3.1824 * std::sqrt(5.0) / 60, 1e-5);
    EXPECT_NEAR(told->low, 2.5 - 3.1824 * std::sqrt(5.0) / 60, 1e-5);
    // At a joint the slopes differ: 50 to the other side.
    const auto joint = lines->Predict(Values{110});
    EXPECT_NEAR(joint->low, 2 - 3.1824 * std::sqrt(6.0) / 50, 1e-5);
    EXPECT_NEAR(joint->high, 2 + 3.1824 * std::sqrt(6.0) / 60, 1e-5);
    EXPECT_TRUE(lines->Predict(Values{48}) && lines->Predict(Values{161}));
    EXPECT_FALSE(lines->Predict(Values{47.9}) || lines->Predict(Values{161.1}));
    EXPECT_TRUE(lines->Predict(Values{60, 100, 80})->scattersMore);
    EXPECT_FALSE(JoinedLines::Of(Values{1, 2}, Values{1, 2})->Predict(Values{1.5})) << "nothing is repeated";
    EXPECT_FALSE(JoinedLines::Of(Values{1, 2, 3}, Values{1, 3, 2})) << "up and down";
    EXPECT_FALSE(JoinedLines::Of(Values{1, 1}, Values{1, 3})) << "one x";
}

TEST(LinearityTest, ComparesTheLineWithAParabolaAndWithRepeatedPoints) {
    const auto mandel = MandelTest(CurvedX, CurvedY);
    EXPECT_NEAR(mandel->f, 111.38108919942536, 1e-6);
    EXPECT_NEAR(mandel->limit, 16.258, 1e-3);  // F 0.99 of 1 and 5 degrees, tables
    EXPECT_TRUE(mandel->Significant());
    // Means 1.1, 2.2, 3.0 of pairs that differ by 0.2: squares 0.08 about the line, 0.06 within the pairs.
    const Values x = {1, 1, 2, 2, 3, 3}, y = {1.0, 1.2, 2.3, 2.1, 2.9, 3.1};
    const auto lack = LackOfFitTest(x, y);
    EXPECT_NEAR(lack->f, 1.5, 1e-9);
    EXPECT_NEAR(lack->limit, 34.116, 1e-3);  // F 0.99 of 1 and 3 degrees, tables
    EXPECT_FALSE(lack->Significant());
    EXPECT_FALSE(LackOfFitTest(Values{1, 2, 3}, Values{1, 2, 4})) << "nothing is repeated";
    EXPECT_FALSE(LackOfFitTest(Values{1, 1, 2}, Values{1, 2, 4})) << "two different x";
    EXPECT_FALSE(LackOfFitTest(Values{1, 1, 2, 3}, Values{1, 1, 2, 4})) << "repeated ones are alike";
    EXPECT_FALSE(MandelTest(Values{1, 2, 3}, Values{1, 2, 4})) << "three points";
}

/// The share of the intervals off a curve that hold the true x, by a fixed seed. With 2000 calibrations it scatters by
/// half a percent.
TEST(CurvePredictionTest, HoldsTheTruthIn95Of100) {
    for (const auto& [curve, count, readings] :
         {std::tuple{'p', 4, 1}, {'p', 10, 5}, {'o', 4, 1}, {'o', 5, 3}, {'j', 3, 2}}) {
        std::mt19937 random(20);
        std::normal_distribution<double> noise(0, 0.5);
        std::uniform_real_distribution<double> place(-5, -1);
        const auto potential = [&, curve = curve](double x) {
            if (curve == 'o') return -58 * std::log10(std::pow(10.0, x) + 1e-5);
            return -58 * x - (curve == 'p' ? 2 * (x + 3) * (x + 3) : 0);
        };
        int told = 0, held = 0;
        for (int i = 0; i < 2000; ++i) {
            Values x, y, sample;
            for (int k = 0; k < (curve == 'j' ? 2 : 1) * count; ++k) {
                x.push_back(-5 + 4.0 * (k % count) / (count - 1));
                y.push_back(potential(x.back()) + noise(random));
            }
            const double truth = place(random);
            for (int k = 0; k < readings; ++k)
                sample.push_back(potential(truth) + noise(random));
            const auto out = curve == 'p'   ? PredictFromCurve(*Parabola::Of(x, y), {-5, -1}, sample, 2)
                             : curve == 'o' ? PredictFromCurve(*OffsetLine::Of(x, y), {-5, -1}, sample, 2)
                                            : JoinedLines::Of(x, y)->Predict(sample);
            told += out ? 1 : 0;
            held += out && out->low <= truth && truth <= out->high ? 1 : 0;
        }
        EXPECT_GT(held, 0.93 * told) << curve << count;
        EXPECT_LT(held, 0.97 * told) << curve << count;
        EXPECT_GT(told, 1900) << curve << count;
    }
}

}  // namespace
}  // namespace kelvo
