#include "calibration/Potentiometry.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/Calibration.h"
#include "calibration/CurveFit.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

const char* const OutOfRange = "Data out of range, please try again.";

enum class Mode { Linear, Segments, Best };

AppState StateOf(Mode mode, const std::vector<Point>& points) {
    AppState state;
    state.IonIndex = Fluoride;
    SetPoints(state, points);
    state.LinearFit = mode == Mode::Linear;
    state.PartlyLinearFit = mode == Mode::Segments;
    state.BestFitCurve = mode == Mode::Best;
    return state;
}

/// Name and potential; LogC|mol/L|ppm, or the message, or "" for silence.
using Case = std::tuple<const char*, float, std::string>;

void Check(const AppState& state, const std::vector<Case>& samples) {
    for (const auto& [name, e, shown] : samples) {
        ScriptedPrompts prompts;
        const bool figures = shown.find('|') != std::string::npos;
        if (!figures && !shown.empty()) prompts.ExpectMessage(shown);
        const auto result = PotentialToSample(CalibrationOf(state), prompts, e);
        ASSERT_EQ(result.has_value(), figures) << name;
        if (!figures) continue;
        EXPECT_EQ(Joined(result->LogCText, result->MolarText, result->PpmText), shown) << name;
    }
}

TEST(Potentiometry, LinearCurveHasNoRangeButTheMillivolts) {
    AppState state = FluorideState();
    state.LinearFit = 1;
    ScriptedPrompts prompts;
    ASSERT_TRUE(FitLinear(state, prompts));
    Check(state, {{"the worked sample", 30, "-2.73|1.87E-3|35.60"},
                  {"a standard, through the line", 4, "-2.28|5.26E-3|99.93"},
                  {"upper limit", 1000, "-19.45|3.54E-20|0.00"},
                  {"beyond the lower one", -1000.5f, "Input data out of range(±1000 mV), please re-typy again."}});
    state.CaliSlope = 0;
    Check(state, {{"slope 0", 30, OutOfRange}});
    state.CaliSlope = 0.001f;
    Check(state, {{"a power of ten that is too large", 30, OutOfRange}});
}

TEST(Potentiometry, TwoPointsShowRowsZeroAndOneAsStored) {
    AppState state = StateOf(Mode::Linear, {{-1.285f, 4, 77.125f, 0.5f}, {-2, 62, 7, 0.25f}});
    state.CaliSlope = -50;
    state.CaliEo = -38;
    Check(state, {{"row 1 as entered", 4, "-1.29|5.00E-1|77.13"},
                  {"row 2 goes through the line", 62, "-2.00|1.00E-2|189.98"}});
    ScriptedPrompts prompts;
    EXPECT_EQ(PotentialToSample(CalibrationOf(state), prompts, 0).value().PpmText, "0.00") << "the empty row 0";
}

TEST(Potentiometry, PartlyLinearEnds) {
    Check(StateOf(Mode::Segments, {{-3, 0, 3, 0.3f}, {-2, 60, 2, 0.2f}, {-1, 100, 1, 0.1f}}),
          {{"lower end, rising", 0, "-3.00|3.00E-1|3.00"},
           {"inside", 30, "-2.50|3.16E-3|60.08"},
           {"inner point as stored", 60, "-2.00|2.00E-1|2.00"},
           {"upper end, rising", 100, OutOfRange},
           {"below", -0.01f, OutOfRange}});
    Check(StateOf(Mode::Segments, {{-1, 100, 1, 0.1f}, {-2, 40, 2, 0.2f}}),
          {{"upper end, falling", 100, "-1.00|1.00E-1|1.00"},
           {"lower end, falling: computed", 40, "-2.00|1.00E-2|189.98"}});
    Check(StateOf(Mode::Segments, {{-1, 5, 1, 0.1f}, {-2, 5, 2, 0.2f}, {-3, 9, 3, 0.3f}}),
          {{"one potential twice: the first row", 5, "-1.00|1.00E-1|1.00"},
           {"the segment behind", 7, "-2.50|3.16E-3|60.08"}});
}

TEST(Potentiometry, BestFitRoots) {
    AppState state = StateOf(Mode::Best, {{-2, 4}, {0, 0}, {2, 4}});
    state.FitA = 1;  // E = LogC²
    const char* const noRoot = "Square-roots are negative, or division by zero; function cannot be used";
    Check(state, {{"root at the open top, then the one at the bottom", 4, "-2.00|1.0E-2|189.98"},
                  {"both in range: the plus sign wins", 1, "1.00|1.00E1|189984.00"},
                  {"no real root", -1, noRoot},
                  {"both beyond", 9, OutOfRange}});
}

TEST(Potentiometry, TableRow) {
    EXPECT_EQ(SampleRow(3, "20:49", {"30", "-2.73", "1.87E-3", "35.6", "7.5", "25", "20"}),
              " 2\t\t20:49\t30\t35.60\t1.87E-3\t25\t77.0\t7.5");
    EXPECT_EQ(SampleRow(1, "09:05", {"30", "", "", "", "7.5", "1E300", ""}), " 0\t\t09:05\t30\t\t\t1E300\tN/A\t7.5");
}

TEST(Potentiometry, RemarksOnWhatMayMislead) {
    const auto remark = [](float slope, float e) {
        AppState state = StateOf(Mode::Linear, {{-1, -70}, {-2, -12}, {-3, 46}});
        state.CaliSlope = slope;
        const std::string whole = SampleRemark(CalibrationOf(state), 0, e);
        return whole.substr(0, whole.find(':'));
    };
    EXPECT_EQ(Joined(remark(-58, 46), remark(-58, 47), remark(0, 30)),
              "|The potential lies outside the calibration points|The slope is 0");
}

}  // namespace
}  // namespace kelvo::test
