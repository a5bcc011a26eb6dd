#include "calibration/Potentiometry.h"

#include <cmath>
#include <functional>
#include <random>

#include "calibration/CaliTestPoints.h"
#include "calibration/CurveFit.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

const char* const OutOfRange = "Data out of range, please try again.";
const char* const TooFar = "Input data out of range(±1000 mV), please re-typy again.";
const char* const NoRoot = "Square-roots are negative, or division by zero; function cannot be used";

enum class Mode { None, Linear, Segments, Best };

AppState StateOf(Mode mode, std::initializer_list<Point> points) {
    AppState state;
    state.IonIndex = Fluoride;
    SetPoints(state, points);
    state.LinearFit = mode == Mode::Linear;
    state.PartlyLinearFit = mode == Mode::Segments;
    state.BestFitCurve = mode == Mode::Best;
    return state;
}

struct Sample {
    const char* name;
    float e;
    const char *logC, *molar, *ppm;  // or
    const char* message = nullptr;
};

void Check(AppState state, const std::vector<Sample>& samples) {
    for (const Sample& s : samples) {
        ScriptedPrompts prompts;
        if (s.message) prompts.ExpectMessage(s.message);
        const auto result = PotentialToSample(state, prompts, s.e);
        ASSERT_EQ(result.has_value(), s.logC != nullptr) << s.name;
        if (!result) continue;
        EXPECT_EQ(result->LogCText, s.logC) << s.name;
        EXPECT_EQ(result->MolarText, s.molar) << s.name;
        EXPECT_EQ(result->PpmText, s.ppm) << s.name;
    }
}

TEST(Potentiometry, LinearCurveHasNoRangeButTheMillivolts) {
    AppState state = FluorideState();
    state.LinearFit = 1;
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitLinear(state, prompts));
    Check(state, {{"the worked sample", 30, "-2.73", "1.87E-3", "35.60"},
                  {"a standard, through the line", 4, "-2.28", "5.26E-3", "99.93"},
                  {"upper limit", 1000, "-19.45", "3.54E-20", "0.00"},
                  {"beyond it", 1000.1f, nullptr, nullptr, nullptr, TooFar},
                  {"beyond the lower one", -1000.5f, nullptr, nullptr, nullptr, TooFar}});
    state.CaliSlope = 0;
    Check(state, {{"slope 0", 30, nullptr, nullptr, nullptr, OutOfRange}});
    state.CaliSlope = 0.001f;
    Check(state, {{"a power of ten that is too large", 30, nullptr, nullptr, nullptr, OutOfRange}});
}

TEST(Potentiometry, TwoPointsShowRowsZeroAndOneAsStored) {
    AppState state = StateOf(Mode::Linear, {{-1.285f, 4, 77.125f, 0.5f}, {-2, 62, 7, 0.25f}});
    state.CaliSlope = -50;
    state.CaliEo = -38;
    Check(state, {{"row 1 as entered", 4, "-1.29", "5.00E-1", "77.13"},
                  {"row 2 goes through the line", 62, "-2.00", "1.00E-2", "189.98"},
                  {"beside row 1", 12, "-1.00", "1.00E-1", "1899.84"}});
    ScriptedPrompts prompts;
    const auto empty = PotentialToSample(state, prompts, 0);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->LogCText + " " + empty->PpmText, "0.00 0.00");
}

TEST(Potentiometry, PartlyLinearEnds) {
    Check(StateOf(Mode::Segments, {{-3, 0, 3, 0.3f}, {-2, 60, 2, 0.2f}, {-1, 100, 1, 0.1f}}),
          {{"lower end, rising", 0, "-3.00", "3.00E-1", "3.00"},
           {"inside", 30, "-2.50", "3.16E-3", "60.08"},
           {"inner point as stored", 60, "-2.00", "2.00E-1", "2.00"},
           {"upper end, rising", 100, nullptr, nullptr, nullptr, OutOfRange},
           {"below", -0.01f, nullptr, nullptr, nullptr, OutOfRange}});
    Check(StateOf(Mode::Segments, {{-1, 100, 1, 0.1f}, {-2, 40, 2, 0.2f}}),
          {{"upper end, falling", 100, "-1.00", "1.00E-1", "1.00"},
           {"lower end, falling: computed", 40, "-2.00", "1.00E-2", "189.98"}});
    Check(StateOf(Mode::Segments, {{-1, 5, 1, 0.1f}, {-2, 5, 2, 0.2f}, {-3, 9, 3, 0.3f}}),
          {{"one potential twice: the first row", 5, "-1.00", "1.00E-1", "1.00"},
           {"the segment behind", 7, "-2.50", "3.16E-3", "60.08"}});
    Check(StateOf(Mode::Segments, {{-1, 5, 1, 0.1f}}),
          {{"one point has no segment", 5, nullptr, nullptr, nullptr, OutOfRange}});
}

TEST(Potentiometry, BestFitRoots) {
    AppState state = StateOf(Mode::Best, {{-2, 4}, {0, 0}, {2, 4}});
    state.FitA = 1;  // E = LogC²
    Check(state, {{"root at the open top, then the one at the bottom", 4, "-2.00", "1.0E-2", "189.98"},
                  {"both in range: the plus sign wins", 1, "1.00", "1.00E1", "189984.00"},
                  {"no real root", -1, nullptr, nullptr, nullptr, NoRoot},
                  {"both beyond", 9, nullptr, nullptr, nullptr, OutOfRange}});
    state.CaliLogC[1] = -1;
    Check(state, {{"root at the top alone", 4, nullptr, nullptr, nullptr, OutOfRange}});
    state.FitA = 0;
    Check(state, {{"no parabola", 1, nullptr, nullptr, nullptr, NoRoot}});
    state.FitA = 1e38f;
    state.FitC = 1e10;
    Check(state, {{"a discriminant that is too large", 1, nullptr, nullptr, nullptr, OutOfRange}});
}

TEST(Potentiometry, ModesAreTestedInOrder) {
    AppState state = StateOf(Mode::None, {{-2, 4}, {0, 0}, {2, 4}});
    state.CaliSlope = 1;
    Check(state, {{"no curve: silence", 1, nullptr, nullptr, nullptr}});
    state.BestFitCurve = state.PartlyLinearFit = state.LinearFit = 1;
    Check(state, {{"linear first", 2, "2.00", "1.00E2", "1899839.97"}});  // 10^5 of the 32-bit 18.9983997
}

TEST(Potentiometry, InvertsTheLine) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> slopes(20, 70), intercepts(-400, 400), logs(-7, 1);
    AppState state = StateOf(Mode::Linear, {{0, 0}, {0, 0}, {0, 0}});
    for (int i = 0; i < 2000; ++i) {
        state.CaliSlope = static_cast<float>(slopes(random) * (i % 2 ? 1 : -1));
        state.CaliEo = intercepts(random);
        const double logC = logs(random);
        const auto e = static_cast<float>(state.CaliSlope * logC + state.CaliEo);
        const SampleOutcome outcome = SampleFromPotential(state, e);
        ASSERT_TRUE(outcome.value);
        // Half a unit of the 32-bit potential (below 1024: 3.1e-5) over the slope, and half a unit of LogC below 8.
        ASSERT_NEAR(outcome.value->LogC, logC, 3.1e-5 / 20 + 2.4e-7) << i;
        ASSERT_NEAR(outcome.value->ppm, std::pow(10, outcome.value->LogC) * 18998.4, outcome.value->ppm * 1e-6) << i;
    }
}

TEST(Potentiometry, TableRow) {
    const std::array<std::string, 7> boxes = {"30", "-2.73", "1.87E-3", "35.6", "7.5", "25", "20"};
    EXPECT_EQ(SampleRow({}, 3, "20:49", boxes), " 2\t\t20:49\t30\t35.60\t1.87E-3\t25\t77.0\t7.5");
    EXPECT_EQ(SampleRow({}, 1, "09:05", {"30", "", "", "", "7.5", "1E300", ""}),
              " 0\t\t09:05\t30\t\t\t1E300\tN/A\t7.5");
}

TEST(Potentiometry, RemarksOnWhatMayMislead) {
    struct Case {
        const char* name;
        std::function<void(AppState&)> change;
        float e;
        const char* part;
    };
    const Case cases[] = {
        {"a plain sample", [](AppState&) {}, 30, ""},
        {"the empty row",
         [](AppState& s) {
             SetPoints(s, {{-1, -10}, {-2, 48}});
         },
         0, "empty row 0"},
        {"no slope", [](AppState& s) { s.CaliSlope = 0; }, 30, "slope is 0"},
        {"a failed fit",
         [](AppState& s) {
             SetPoints(s, {{-1, 0}, {-1, 50}, {-1, 60}});
         },
         30, "earlier"},
        {"a failed curve",
         [](AppState& s) {
             s.LinearFit = 0;
             s.BestFitCurve = 1;
             SetPoints(s, {{-1, 0}, {-1, 50}, {-2, 60}});
         },
         30, "earlier"},
        {"beyond the points", [](AppState&) {}, 121, "extended"},
        {"a full graph", [](AppState& s) { s.SampleCount = 101; }, 30, "101"},
    };
    for (const Case& c : cases) {
        AppState state = FluorideState();
        state.LinearFit = 1;
        state.CaliSlope = -58;
        c.change(state);
        const std::string remark = SampleRemark(state, c.e);
        EXPECT_EQ(remark.empty(), *c.part == '\0') << c.name << ": " << remark;
        EXPECT_NE(remark.find(c.part), std::string::npos) << c.name << ": " << remark;
    }
}

}  // namespace
}  // namespace kelvo::test
