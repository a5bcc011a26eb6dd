#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <vector>

#include "statistics/Budget.h"
#include "statistics/Figures.h"
#include "statistics/InversePrediction.h"
#include "statistics/LeftOut.h"
#include "statistics/Norris.h"
#include "statistics/Replicates.h"
#include "statistics/StraightLine.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

TEST(StraightLine, HasTheCertifiedFiguresOfNorris) {
    const auto line = FitStraightLine(NorrisX, NorrisY);
    ASSERT_TRUE(line);
    const std::tuple<const char*, double, double> rows[] = {
        {"intercept", line->intercept, -0.262323073774029},
        {"slope", line->slope, 1.00211681802045},
        {"deviation of the intercept", line->interceptDeviation, 0.232818234301152},
        {"deviation of the slope", line->slopeDeviation, 0.429796848199937e-3},
        {"residual deviation", line->residualDeviation, 0.884796396144373},
        {"r²", line->r2, 0.999993745883712},
        {"residual squares", line->residualSquares, 26.6173985294224}};
    // A double carries 15 to 16 digits. The intercept is the small difference of two means near 430, and the residuals
    // are differences of numbers up to a thousand times as large: they lose three digits at the most.
    for (const auto& [what, value, certified] : rows)
        EXPECT_NEAR(value / certified, 1, 1e-12) << what;
    EXPECT_EQ(line->Freedom(), 34);
    EXPECT_NEAR(line->r, std::sqrt(0.999993745883712), 1e-12);
}

TEST(StraightLine, KnowsAPointBesideTheLineOfTheOthers) {
    const Values x = {0, 1, 2, 3}, y = {0, 1, 3, 2};
    // Sxx is 5 about the mean 1.5. The others are (0, 0), (1, 1), (3, 2): Sxx 14/3, Sxy 3, squares 1/14, and the third
    // has the leverage 3/7 among them: t = 11/7/√(1/14·10/7) = √24.2.
    EXPECT_NEAR(FitStraightLine(x, y)->Leverage(2), 0.25 + 0.25 / 5, 1e-12);
    const auto left = LeaveOut(x, y, 2);
    EXPECT_NEAR(left->others.slope, 9.0 / 14, 1e-12);
    EXPECT_NEAR(left->distance, 11.0 / 7, 1e-12);
    EXPECT_NEAR(*left->studentised, std::sqrt(24.2), 1e-12);
    EXPECT_FALSE(LeaveOut(Values{1, 2, 3}, Values{0, 1, 5}, 0)->studentised) << "two points scatter by nothing";
    EXPECT_FALSE(LeaveOut(Values{1, 1, 3}, Values{0, 1, 5}, 2)) << "the other two have one x";
}

TEST(StraightLine, TellsWhatHasNoLineAndInventsNoSpread) {
    const std::tuple<const char*, Values, Values, bool> rows[] = {
        {"no point", {}, {}, false},
        {"one point", {1}, {1}, false},
        {"one x", {0.1, 0.1, 0.1}, {1, 2, 3}, false},
        {"unequal lengths", {1, 2, 3}, {1, 2}, false},
        {"beyond a double", {0, 1e200}, {0, 1}, false},
        {"x nearer than their squares", {0, 1e-200}, {0, 1}, false},
        {"two points", {1, 2}, {1, 3}, true}};
    for (const auto& [what, x, y, line] : rows)
        EXPECT_EQ(FitStraightLine(x, y).has_value(), line) << what;
    const auto level = FitStraightLine(Values{1, 2, 4}, Values{0.1, 0.1, 0.1});
    EXPECT_EQ(level->slope, 0);
    EXPECT_EQ(level->r2, 0);
    const auto two = FitStraightLine(Values{1, 2}, Values{1, 3});
    EXPECT_EQ(two->slopeDeviation, 0) << "not told, but no NaN";
    EXPECT_EQ(two->r, 1);
    EXPECT_EQ(FitStraightLine(Values{1, 2}, Values{3, 1})->r, -1);
}

TEST(StudentTest, HasTheQuantilesOfTheTables) {
    for (const auto& [freedom, confidence, t] :
         {std::tuple{1, 0.95, 12.7062}, {2, 0.95, 4.3027}, {5, 0.95, 2.5706}, {34, 0.95, 2.0322}, {5, 0.99, 4.0321}})
        EXPECT_NEAR(StudentT(freedom, confidence), t, 5e-5) << freedom;
    EXPECT_NEAR(FisherF(4, 6, 0.975), 6.2272, 5e-5);
}

TEST(InversePredictionTest, WorksTheFluoresceinExample) {
    const auto line = FitStraightLine(Values{0, 2, 4, 6, 8, 10, 12}, Values{2.1, 5.0, 9.0, 12.6, 17.3, 21.0, 24.7});
    const auto prediction = InversePrediction::Of(*line);
    ASSERT_TRUE(prediction);
    EXPECT_NEAR(line->interceptDeviation, 0.2949, 5e-5);
    for (const auto& [y, x, deviation, halfWidth] :
         {std::tuple{2.9, 0.716, 0.265, 0.680}, {13.5, 6.207, 0.240, 0.616}, {23.0, 11.129, 0.263, 0.677}}) {
        const InverseEstimate estimate = prediction->At(y);
        EXPECT_NEAR(estimate.x, x, 5e-4);
        EXPECT_NEAR(estimate.deviation, deviation, 5e-4);
        EXPECT_NEAR(estimate.halfWidth, halfWidth, 5e-4);
    }
    // Four readings of the sample: s/b·√(1/4 + 1/7 + …) = 0.2242·√(0.25 + 0.142857 + 0.0004) at the middle.
    EXPECT_NEAR(prediction->At(13.5, 4).deviation, 0.1406, 5e-5);
    const InverseEstimate calm = prediction->Of(Values{13.4, 13.6, 13.4, 13.6});
    EXPECT_NEAR(calm.halfWidth, 2.5706 * 0.1406, 2e-4);
    EXPECT_FALSE(calm.scattersMore);
    EXPECT_NEAR(prediction->Of(Values{2.9}).halfWidth, 0.680, 5e-4);
    // s_r 1.7321 is four times s 0.4329, and 16 is above F 8.67 of 3 and 5 degrees: √((3.1824·1.7321)²/4 +
    // (2.5706·0.4329)²·(1/7 + 0.0004))/1.9304.
    const InverseEstimate wild = prediction->Of(Values{12, 15, 12, 15});
    EXPECT_NEAR(wild.halfWidth, 1.4443, 5e-4);
    EXPECT_TRUE(wild.scattersMore && wild.readings == 4);
}

TEST(InversePredictionTest, TellsNoIntervalWhereNoneFollows) {
    EXPECT_FALSE(InversePrediction::Of(*FitStraightLine(Values{0, 1}, Values{0, 1}))) << "no degree of freedom";
    EXPECT_FALSE(InversePrediction::Of(*FitStraightLine(Values{0, 1, 2}, Values{1, 1, 1}))) << "slope 0";
    // Slope 1, its deviation 0.1155: times t of one degree of freedom, 12.7, it is 1.47. With 1.1 in the
    // middle it is half of that.
    EXPECT_FALSE(InversePrediction::Of(*FitStraightLine(Values{0, 1, 2}, Values{0, 1.2, 2})))
        << "slope not told from 0";
    EXPECT_TRUE(InversePrediction::Of(*FitStraightLine(Values{0, 1, 2}, Values{0, 1.1, 2})));
}

TEST(ReplicatesTest, SumsUpAndFindsTheOutlier) {
    const auto three = Summarise(Values{10, 12, 14});
    ASSERT_TRUE(three);
    EXPECT_EQ(three->mean, 12);
    EXPECT_EQ(three->deviation, 2);
    EXPECT_NEAR(*three->relative, 100.0 / 6, 1e-12);
    EXPECT_NEAR(three->high, 12 + 4.3027 * 2 / std::sqrt(3.0), 1e-3);
    EXPECT_NEAR(three->low, 12 - 4.3027 * 2 / std::sqrt(3.0), 1e-3);
    EXPECT_FALSE(Summarise(Values{-1, 1})->relative) << "no share of a mean of 0";
    EXPECT_EQ(Summarise(Values{0.1, 0.1, 0.1})->deviation, 0);
    EXPECT_FALSE(Summarise(Values{1}));
    EXPECT_FALSE(Summarise(Values{1e200, -1e200}));

    // NIST/SEMATECH e-Handbook, the mass spectrometer example: G 2.4687.
    const auto masses = GrubbsTest(Values{199.31, 199.53, 200.19, 200.82, 201.92, 201.95, 202.18, 245.57});
    ASSERT_TRUE(masses);
    EXPECT_NEAR(masses->g, 2.4687, 1e-4);
    EXPECT_EQ(masses->suspect, 7u);
    EXPECT_TRUE(masses->Outlier());
    EXPECT_FALSE(GrubbsTest(Values{1, 2})) << "of two neither is the outlier";
    EXPECT_FALSE(GrubbsTest(Values{1, 1, 1}));
    // Miller and Miller, table A.5 (two-sided, P = 0.05).
    const double limits[] = {1.155, 1.481, 1.715, 1.887, 2.020, 2.126, 2.215, 2.290};
    Values values = {0, 1};
    for (const double limit : limits) {
        values.push_back(static_cast<double>(values.size()));
        const auto test = GrubbsTest(values);
        EXPECT_NEAR(test->limit, limit, 1.1e-3) << values.size();
        EXPECT_FALSE(test->Outlier());
    }
    EXPECT_EQ(GrubbsTest(Values{-9, 1, 2, 1, 2})->suspect, 0u) << "the low side too";
}

TEST(FiguresTest, KeepTheDigitsThatTheSpreadIsWorth) {
    const std::tuple<double, double, const char*> rows[] = {{34.0613, 1.55, "34.1"},
                                                            {34.0613, 0.0155, "34.061"},
                                                            {34.0613, 15.5, "34"},
                                                            {34061.3, 155, "34061"},
                                                            {3.41234e-5, 1.5e-6, "3.41E-5"},
                                                            {3.41234e-5, 1.5e-5, "3.4E-5"},
                                                            {0.034, 0.0012, "0.0340"},
                                                            {0.003412, 0.00015, "0.00341"},
                                                            {1.5e7, 1e5, "1.500E7"},
                                                            {0, 1, "0"},
                                                            {12, 0, "12.000000"},
                                                            {12345.6789, 0, "12345.679"},
                                                            {0.001, 1e-4, "0.00100"},
                                                            {-2.345, 0.1, "-2.35"}};
    for (const auto& [value, spread, text] : rows)
        EXPECT_EQ(WithPlacesOf(value, spread), text);
    // value, low, high and the three as one line
    const std::tuple<double, double, double, const char*> intervals[] = {
        {0.0723, 0.07169, 0.0728, "0.07230 ppm, 0.07169 to 0.07280"},
        {43.15, 6.157, 302.4, "43.2 ppm, 6.2 to 302.4"},
        {34.0613, 32.93, 39.02, "34.1 ppm, 32.9 to 39.0"},
        {187.73, 170.8, 206.3, "188 ppm, 171 to 206"},
        {0.00104, 0.00098, 0.00111, "1.040E-3 ppm, 9.80E-4 to 1.110E-3"},
        {5, 5, 5, "5.000000 ppm, 5.000000 to 5.000000"}};
    for (const auto& [value, low, high, line] : intervals)
        EXPECT_EQ(WithInterval(value, low, high).Line("ppm"), line);
    const std::tuple<double, double, const char*> spreads[] = {
        {-58, 0.1897, "-58.00 ± 0.19"}, {-128, 15.5, "-128 ± 16"}, {12345678, 12345, "1.2346E7 ± 1.2E4"}};
    for (const auto& [value, spread, both] : spreads)
        EXPECT_EQ(WithSpread(value, spread).value + " ± " + WithSpread(value, spread).spread, both);
    EXPECT_EQ(WithPlaces(-0.001, 2), "0.00");
    EXPECT_EQ(WithPlaces(1.005, 2), "1.01");
    EXPECT_EQ(WithPlaces(12.5, 0), "13");
    EXPECT_EQ(WithPlaces(-3e8, 2), "-3.00E8");
}

}  // namespace
/// Effective degrees and coverage worked out by hand from the formula, t from tables.
TEST(Budget, AddsPartsUpAndTakesTheirDegreesTogether) {
    struct Row {
        std::vector<Contribution> parts;
        double combined, halfWidth;
        const char* coverage;
    };
    const Row rows[] = {
        {{{"", "", 3, 4}, {"", "", 4, 6}}, 5, 11.311, "t 2.26, 9 degrees of freedom"},
        {{{"", "", 3, 2, 7}, {"", "", 4, 2, 7}, {"", "", 0, 9}}, 5, 21.513, "t 4.30, 2 degrees of freedom"},
        {{{"", "", 3, 2}, {"", "", 4, 2}}, 5, 15.912, "t 3.18, 3 degrees of freedom"},
        {{{"", "", 3, 1}, {"", "", 0.3, 0}}, 3.015, 38.308, "t 12.71, 1 degree of freedom"},
        {{{"", "", 3, 0}, {"", "", 4, 0}}, 5, 9.800, "k 1.96"},
        {{}, 0, 0, "k 1.96"},
    };
    for (const Row& row : rows) {
        const Budget budget(row.parts);
        EXPECT_NEAR(budget.Combined(), row.combined, 1e-3);
        EXPECT_NEAR(budget.HalfWidth(), row.halfWidth, 1e-3);
        EXPECT_EQ(budget.CoverageText(), row.coverage);
    }
    EXPECT_NEAR(Budget(rows[0].parts).Share(1), 64, 1e-9);
    EXPECT_EQ(Budget({{"", "", 0, 3}}).Share(0), 0);
}

}  // namespace kelvo
