#include "calibration/CurveFit.h"

#include <cmath>

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/Calibration.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

TEST(CurveFit, FitsOfFluorideStandardsAndOfAParabola) {
    AppState state = FluorideState();
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitLinear(state, prompts));
    EXPECT_FLOAT_EQ(state.CaliSlope, -58);
    EXPECT_NEAR(state.CaliEo, -128.182, 1e-5);                     // 32-bit LogC: 1e-7 of it times the slope
    SetPoints(state, {{-1, -38}, {-2, 28}, {-3, 98}, {-4, 172}});  // E = 2·LogC² − 60·LogC − 100
    ASSERT_TRUE(FitBestCurve(state, prompts));
    EXPECT_FLOAT_EQ(state.FitA, 2);
    EXPECT_NEAR(state.FitB, -60, 1e-9);
    EXPECT_NEAR(state.FitC, -100, 1e-9);
}

TEST(CurveFit, PointsWithoutACurveKeepTheEarlierCoefficients) {
    const char* const noCurve = "Some data divided by zero, function cannot be used";
    // Seven times −1.6163 and nine times −5.1826158 need more than 53 bits when squared: plain sums leave a spread of
    // 1e-15 there, and a slope of nonsense.
    for (const float x : {-1.6163f, -5.18261576f, 0.0f}) {
        for (std::size_t n = 1; n <= 10; ++n) {
            AppState state;
            state.CaliPoints = static_cast<std::int16_t>(n);
            state.CaliLogC.assign(n + 1, x);
            state.CaliPpm.assign(n + 1, 1);
            for (std::size_t i = 1; i <= n; ++i)
                state.CaliE.push_back(10.1f * static_cast<float>(i));
            state.CaliSlope = state.FitA = 7;
            state.CaliEo = state.FitB = state.FitC = 8;
            ScriptedPrompts prompts;
            prompts.ExpectMessage("'E =Eo + S*LogC' function cannot be used with some of the X values");
            prompts.ExpectMessage(noCurve);
            EXPECT_FALSE(FitLinear(state, prompts) || FitBestCurve(state, prompts)) << x << " " << n;
            EXPECT_EQ(Joined(state.CaliSlope, state.CaliEo, state.FitA, state.FitB, state.FitC), "7|8|7|8|8");
        }
    }
    AppState state;
    ScriptedPrompts prompts;
    SetPoints(state, {{-1.279f, 1}, {-1.279f, 2}, {-2.3f, 3}, {-2.3f, 9}});
    prompts.ExpectMessage(noCurve);
    EXPECT_FALSE(FitBestCurve(state, prompts));
}

TEST(CurveFit, KnownSlope) {
    const std::tuple<float, const char*, const char*, float, int> rows[] = {
        {0, "58", "25", 58.972665f, 0}, {55, "58", "25", 55, 0}, {0, "", "", 0, 0}, {0, "58", "-273.15", 0, 11}};
    for (const auto& [held, typed, at, slope, code] : rows) {
        AppState state;
        SetPoints(state, {{-2, 100}});
        state.CaliEo = 1;
        state.CaliSlope = held;
        state.KnownSlope = typed;
        state.KnownSlopeTemp = at;
        EXPECT_EQ(CodeOf([&] { FitKnownSlope(state, 30); }), code);
        EXPECT_FLOAT_EQ(state.CaliSlope, slope);
        EXPECT_DOUBLE_EQ(state.CaliEo, code ? 1 : 100 + 2 * double{state.CaliSlope});
    }
}

TEST(CurveFit, ConcentrationByInterpolation) {
    using Points = std::vector<Point>;
    const Points four = {{0, 62, 10}, {0, -54, 1000}, {0, 120, 1}, {0, 4, 100}};
    // pHMode, points, potential, ppm, number of the failure
    const std::tuple<const char*, std::int16_t, Points, float, double, int> rows[] = {
        {"a stored point needs no neighbour", 0, {{0, 10, 1}, {0, 10, 2}}, 10, 1, 0},
        {"half a decade", 0, four, 33, 31.622776601683793, 0},
        {"below all", 0, four, -100, 6210.169418915616, 0},
        {"above all", 0, four, 200, 0.041753189365604, 0},
        {"linear half way", -1, four, 33, 55, 0},
        {"one ppm twice, no shortcut at the last point", 0, {{0, 1, 5}, {0, 2, 5}}, 2, -1, 0},
        {"one potential twice, linear", -1, {{0, 10, 1}, {0, 10, 2}}, 11, -1, 0},
        {"one potential twice", 0, {{0, 10, 1}, {0, 10, 2}}, 11, 0, 11},
        {"no logarithm", 0, {{0, 10, 0}, {0, 20, 2}}, 11, 0, 5},
        {"one point divides by its LogC", 0, {{-2, 100, 1}}, 90, 1e5, 0},
        {"no points", 0, {}, 0, 0, 9},
    };
    for (const auto& [name, mode, points, e, expected, code] : rows) {
        AppState state;
        SetPoints(state, points);
        state.pHMode = mode;
        double ppm = 0;
        EXPECT_EQ(CodeOf([&, mv = e] { ppm = ConcFromPotential(state, state.CaliPoints, mv); }), code) << name;
        EXPECT_NEAR(ppm, expected, std::abs(expected) * 1e-12) << name;
    }
    AppState state;
    SetPoints(state, {{-1, 120, 1, 0.1f}, {-2, 4, 100, 0.2f}});
    ConcFromPotential(state, 2, 50);
    EXPECT_EQ(Joined(state.CaliE, state.CaliPpm), "0,120,4|0,1,100") << "the calibration in use is not touched";
    EXPECT_EQ(static_cast<float>(*CalibrationOf(FluorideState()).SegmentSlope(2)), -58)
        << "LogC differ by 1.0000001 in binary; seven digits say -58";
}

TEST(CurveFit, ARefusedFitSaysWhatIsOfAnEarlierCalibration) {
    // line and curve refused; active: 0 the line, 1 segments, 2 best fit
    const std::tuple<bool, bool, int, float, float, const char*> rows[] = {
        {false, false, 0, -58, 0, ""},
        {true, false, 0, -58, 0,
         "These points have no straight line: slope and results are of an earlier calibration."},
        {true, false, 0, 0, 0, "These points have no straight line: there is no slope."},
        {true, false, 1, -58, 0, "These points have no straight line: the slope is of an earlier calibration."},
        {false, true, 2, -58, 2, "These points have no best-fit curve: the results are of an earlier calibration."},
        {false, true, 2, -58, 0, "These points have no best-fit curve: there are no results."},
        {false, true, 0, -58, 2, ""},
        {true, true, 2, -58, 2,
         "These points have neither a straight line nor a best-fit curve: slope and results are of an earlier "
         "calibration."},
    };
    for (const auto& [line, curve, active, slope, a, remark] : rows) {
        AppState state = FluorideState();
        state.LineRefused = line;
        state.CurveRefused = curve;
        state.LinearFit = active == 0;
        state.BestFitCurve = active == 2;
        state.CaliSlope = slope;
        state.FitA = a;
        EXPECT_EQ(RefusedFitRemark(state), remark);
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
    EXPECT_EQ(Joined(sigmas->slope, sigmas->intercept), "0.289|0.624");
    CollectSums(state, 2);
    prompts.ExpectMessage("Correlation cannot be made with negative or zero values");
    EXPECT_FALSE(ShowSigmas(state, prompts, 2));
    SetPoints(state, {{1, 1.9f}, {2, 1.9f}, {3, 1.9f}, {4, 1.9f}, {5, 1.9f}, {6, 1.9f}, {7, 1.9f}});
    CollectSums(state, 7);
    prompts.ExpectMessage("Correlation cannot be made with zero values");
    EXPECT_FALSE(ShowCorrelation(state, prompts, 7));
}

}  // namespace
}  // namespace kelvo::test
