#include "calibration/CurveFit.h"

#include <cmath>
#include <random>

#include "calibration/CaliTestPoints.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

const char* const NoLine = "'E =Eo + S*LogC' function cannot be used with some of the X values";
const char* const NoCurve = "Some data divided by zero, function cannot be used";

TEST(CurveFit, LinearFitOfFluorideStandards) {
    AppState state = FluorideState();
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitLinear(state, prompts));
    EXPECT_FLOAT_EQ(state.CaliSlope, -58);
    EXPECT_NEAR(state.CaliEo, -128.182, 1e-5);  // 32-bit LogC: 1e-7 of it times the slope
    EXPECT_EQ(SlopeText(state), "-58.00");
}

// NIST StRD, linear regression, data set Norris: certified intercept -0.262323073774029, slope 1.00211681802045.
TEST(CurveFit, LinearFitOfCertifiedData) {
    AppState state;
    SetPoints(
        state,
        {{0.2f, 0.1f},     {337.4f, 338.8f}, {118.2f, 118.1f}, {884.6f, 888},    {10.1f, 9.2f},    {226.5f, 228.1f},
         {666.3f, 668.5f}, {996.3f, 998.5f}, {448.6f, 449.1f}, {777, 778.9f},    {558.2f, 559.2f}, {0.4f, 0.3f},
         {0.6f, 0.1f},     {775.5f, 778.1f}, {666.9f, 668.8f}, {338, 339.3f},    {447.5f, 448.9f}, {11.6f, 10.8f},
         {556, 557.7f},    {228.1f, 228.3f}, {995.8f, 998},    {887.6f, 888.8f}, {120.2f, 119.6f}, {0.3f, 0.3f},
         {0.3f, 0.6f},     {556.8f, 557.6f}, {339.1f, 339.3f}, {887.2f, 888},    {999, 998.5f},    {779, 778.9f},
         {11.1f, 10.2f},   {118.3f, 117.6f}, {229.2f, 228.9f}, {669.1f, 668.4f}, {448.9f, 449.2f}, {0.5f, 0.2f}});
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitLinear(state, prompts));
    EXPECT_FLOAT_EQ(state.CaliSlope, 1.00211681802045f);
    // The slope is rounded to half of 1.2e-7, which the mean of 419 carries into the intercept.
    EXPECT_NEAR(state.CaliEo, -0.262323073774029, 419.2 * 6e-8 + 1e-5);
}

TEST(CurveFit, LinearFitAgreesWithCentredSums) {
    std::mt19937 random(20261124);
    std::uniform_real_distribution<float> logC(-7, 1), potential(-1000, 1000);
    for (int round = 0; round < 500; ++round) {
        AppState state;
        const int n = 2 + round % 9;
        long double meanX = 0, meanY = 0, sxx = 0, sxy = 0;
        for (int i = 0; i < n; ++i) {
            state.CaliLogC.push_back(logC(random));
            state.CaliE.push_back(potential(random));
            state.CaliPpm.push_back(0);
            meanX += state.CaliLogC.back() / static_cast<long double>(n);
            meanY += state.CaliE.back() / static_cast<long double>(n);
        }
        for (std::size_t i = 1; i < state.CaliE.size(); ++i) {
            sxx += (state.CaliLogC[i] - meanX) * (state.CaliLogC[i] - meanX);
            sxy += (state.CaliLogC[i] - meanX) * (state.CaliE[i] - meanY);
        }
        state.CaliPoints = static_cast<std::int16_t>(n);
        ScriptedPrompts prompts;
        ASSERT_TRUE(FitLinear(state, prompts));
        // One unit in the last place of 32 bits, and what the uncentred sums lose: 2e-16 of 3·10^4 over Sxx.
        const auto slope = static_cast<double>(sxy / sxx);
        ASSERT_NEAR(state.CaliSlope, slope, std::abs(slope) * 1.2e-7 + 1e-10 / static_cast<double>(sxx)) << round;
        ASSERT_NEAR(state.CaliEo, static_cast<double>(meanY - meanX * state.CaliSlope), 1e-11 * (100 + std::abs(slope)))
            << round;
    }
}

TEST(CurveFit, PointsWithoutACurveKeepTheEarlierCoefficients) {
    // Seven times −1.6163 and nine times −5.1826158 need more than 53 bits when squared: plain sums leave a spread of
    // 1e-15 there, and a slope of nonsense.
    for (const float x : {-1.6163f, -5.18261576f, -2.3010299f, -3.1f, 0.7f, 0.0f, -3.0f}) {
        for (int n = 1; n <= 10; ++n) {
            AppState state;
            for (int i = 1; i <= n; ++i) {
                state.CaliLogC.push_back(x);
                state.CaliE.push_back(10.1f * static_cast<float>(i));
                state.CaliPpm.push_back(1);
            }
            state.CaliPoints = static_cast<std::int16_t>(n);
            state.CaliSlope = state.FitA = 7;
            state.CaliEo = state.FitB = state.FitC = 8;
            ScriptedPrompts prompts;
            prompts.ExpectMessage(NoLine);
            prompts.ExpectMessage(NoCurve);
            EXPECT_FALSE(FitLinear(state, prompts)) << x << " " << n;
            EXPECT_FALSE(FitBestCurve(state, prompts)) << x << " " << n;
            EXPECT_TRUE(state.CaliSlope == 7 && state.CaliEo == 8);
            EXPECT_TRUE(state.FitA == 7 && state.FitB == 8 && state.FitC == 8);
        }
    }
    AppState state;
    SetPoints(state, {{-1.279f, 1}, {-1.279f, 2}, {-2.3f, 3}, {-2.3f, 9}});
    ScriptedPrompts prompts;
    prompts.ExpectMessage(NoCurve);
    EXPECT_FALSE(FitBestCurve(state, prompts));
    EXPECT_TRUE(FitLinear(state, prompts));
}

TEST(CurveFit, AnOverflowIsOneMessage) {
    AppState state;
    SetPoints(state, {{0, -3e38f}, {1e-20f, 3e38f}});
    ScriptedPrompts prompts;
    prompts.ExpectMessage("Data out of range, please try again.");
    EXPECT_FALSE(FitLinear(state, prompts));
    EXPECT_EQ(state.CaliSlope, 0);
}

TEST(CurveFit, BestCurveGivesBackAParabola) {
    AppState state;  // E = 2·LogC² − 60·LogC − 100
    SetPoints(state, {{-1, -38}, {-2, 28}, {-3, 98}, {-4, 172}});
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitBestCurve(state, prompts));
    EXPECT_FLOAT_EQ(state.FitA, 2);
    EXPECT_NEAR(state.FitB, -60, 1e-9);
    EXPECT_NEAR(state.FitC, -100, 1e-9);
}

TEST(CurveFit, KnownSlope) {
    struct Case {
        const char* name;
        float held;
        const char *slope, *at;
        double temperature;
        float expectedSlope;
        int code;
    } cases[] = {
        {"as typed", 0, "58", "25.0", 25, 58, 0},
        {"carried to another temperature", 0, "58", "25", 30, 58.972665f, 0},
        {"a slope that is held stays", 55, "58", "25", 30, 55, 0},
        {"nothing typed", 0, "", "", 25, 0, 0},
        {"absolute zero", 0, "58", "-273.15", 25, 0, 11},
        {"too large", 0, "1E38", "-273", 1e3, 0, 6},
    };
    for (const Case& c : cases) {
        AppState state;
        SetPoints(state, {{-2, 100}});
        state.CaliEo = 1;
        state.CaliSlope = c.held;
        state.KnownSlope = c.slope;
        state.KnownSlopeTemp = c.at;
        EXPECT_EQ(CodeOf([&] { FitKnownSlope(state, c.temperature); }), c.code) << c.name;
        EXPECT_FLOAT_EQ(state.CaliSlope, c.expectedSlope) << c.name;
        EXPECT_DOUBLE_EQ(state.CaliEo, c.code ? 1 : 100 + 2 * double{state.CaliSlope}) << c.name;
    }
}

TEST(CurveFit, Statistics) {
    // x 1, 2, 3 and y 1, 2, 2: Sxx 2, Sxy 1, Syy 2/3, so r = √0.75; Q 0.5, D 6, W 6.
    AppState state;
    SetPoints(state, {{1, 1}, {2, 2}, {3, 2}});
    ScriptedPrompts prompts;
    CollectSums(state, 3);
    EXPECT_EQ(ShowCorrelation(state, prompts, 3), "0.866");
    const auto sigmas = ShowSigmas(state, prompts, 3);
    ASSERT_TRUE(sigmas);
    EXPECT_EQ(sigmas->slope, "0.289");
    EXPECT_EQ(sigmas->intercept, "0.624");

    CollectSums(state, 2);
    prompts.ExpectMessage("Correlation cannot be made with negative or zero values");
    EXPECT_FALSE(ShowSigmas(state, prompts, 2));
    SetPoints(state, {{1, 1.9f}, {2, 1.9f}, {3, 1.9f}, {4, 1.9f}, {5, 1.9f}, {6, 1.9f}, {7, 1.9f}});
    CollectSums(state, 7);
    prompts.ExpectMessage("Correlation cannot be made with zero values");
    EXPECT_FALSE(ShowCorrelation(state, prompts, 7));
}

TEST(CurveFit, SortMovesTheSecondArrayAlong) {
    std::vector<float> keys = {9, 3, 1, 2, 1, -5}, other = {0, 30, 10, 20, 11, -50};
    SortPairs(1, 4, keys, other);
    EXPECT_EQ(keys, (std::vector<float>{9, 1, 1, 2, 3, -5}));
    EXPECT_EQ(other[0] + other[5], -50);
    EXPECT_EQ(other[1] + other[2], 21);
    EXPECT_TRUE(other[3] == 20 && other[4] == 30);
}

TEST(CurveFit, ConcentrationByInterpolation) {
    struct Case {
        const char* name;
        int mode;
        std::initializer_list<Point> points;
        float e;
        double ppm;
        int code;
    };
    const std::initializer_list<Point> four = {{0, 62, 10}, {0, -54, 1000}, {0, 120, 1}, {0, 4, 100}};
    const Case cases[] = {
        {"first point", 0, four, -54, 1000, 0},
        {"inner point", 0, four, 62, 10, 0},
        {"last point", 0, four, 120, 1, 0},
        {"half a decade", 0, four, 33, 31.622776601683793, 0},
        {"below all", 0, four, -100, 6210.169418915616, 0},
        {"above all", 0, four, 200, 0.041753189365604, 0},
        {"linear half way", -1, four, 33, 55, 0},
        {"the last point alone has no shortcut", 0, {{0, 1, 5}, {0, 2, 5}}, 2, -1, 0},
        {"one ppm twice", 0, {{0, 1, 5}, {0, 2, 5}}, 1.5f, -1, 0},
        {"one potential twice, linear", -1, {{0, 10, 1}, {0, 10, 2}}, 11, -1, 0},
        {"one potential twice", 0, {{0, 10, 1}, {0, 10, 2}}, 11, 0, 11},
        {"no logarithm", 0, {{0, 10, 0}, {0, 20, 2}}, 11, 0, 5},
        {"one point divides by its LogC", 0, {{-2, 100, 1}}, 90, 1e5, 0},
        {"one point of LogC 0", 0, {{0, 100, 1}}, 90, 0, 11},
        {"no points", 0, {}, 0, 0, 9},
    };
    for (const Case& c : cases) {
        AppState state;
        SetPoints(state, c.points);
        state.pHMode = static_cast<std::int16_t>(c.mode);
        double ppm = 0;
        EXPECT_EQ(CodeOf([&] { ppm = ConcFromPotential(state, state.CaliPoints, c.e); }), c.code) << c.name;
        EXPECT_NEAR(ppm, c.ppm, std::abs(c.ppm) * 1e-12) << c.name;
    }
}

TEST(CurveFit, RecordingSortsPotentialsAndPpmAlone) {
    AppState state = FluorideState();
    SetPoints(state, {{-1, 120, 1, 0.1f}, {-2, 4, 100, 0.2f}});
    ConcFromPotential(state, 2, 50);
    EXPECT_EQ(state.CaliE, (std::vector<float>{0, 4, 120}));
    EXPECT_EQ(state.CaliPpm, (std::vector<float>{0, 100, 1}));
    EXPECT_EQ(state.CaliLogC, (std::vector<float>{0, -1, -2}));
    EXPECT_EQ(state.CaliMolar, (std::vector<float>{0, 0.1f, 0.2f}));
}

TEST(CurveFit, PartialSlopesAndPairing) {
    AppState state = FluorideState();
    EXPECT_EQ(PartialSlope(state, 3), -58);  // LogC differ by 1.0000001 in binary; seven digits say −58
    EXPECT_TRUE(PairingRemark(state).empty());
    state.CaliLogC[3] = state.CaliLogC[2];
    EXPECT_FALSE(PartialSlope(state, 3));
    EXPECT_EQ(CodeOf([&] { PartialSlope(state, 1); }), 9);
    EXPECT_EQ(CodeOf([&] { PartialSlope(state, 5); }), 9);
    std::swap(state.CaliPpm[1], state.CaliPpm[4]);
    EXPECT_FALSE(PairingRemark(state).empty());
}

}  // namespace
}  // namespace kelvo::test
