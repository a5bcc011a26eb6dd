#include "calibration/Potentiometry.h"

#include <algorithm>
#include <cmath>

#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/IseCalibration.h"
#include "core/IonSettings.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double LargestCelsius = 1e30;  // beyond it no 32-bit Fahrenheit exists

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

SampleValue StoredRow(const IseCalibration& calibration, int i) {
    return {calibration.CaliLogC[At(i)], calibration.CaliMolar[At(i)], calibration.CaliPpm[At(i)],
            SampleValue::Source::StoredRow};
}

SampleValue FromLogC(const IonSettings& ion, double logC, SampleValue::Source source) {
    const double molar = Finite(std::pow(10.0, logC));
    return {logC, molar, MolarToPpm(ion.Ions, molar, ion.IonIndex), source};
}

SampleOutcome OnLine(const CalibrationState& state, float e) {
    // With two points the rows 0 and 1 have this shortcut, and row 2 has not: 0 mV shows the empty row 0.
    if (state.CaliPoints == 2 && (e == state.CaliE[0] || e == state.CaliE[1]))
        return {StoredRow(state, e != state.CaliE[0] ? 1 : 0)};
    return {FromLogC(state, ToSingle(Divide(e - state.CaliEo, state.CaliSlope)), SampleValue::Source::Line)};
}

SampleOutcome OnSegments(const CalibrationState& state, float e) {
    for (int i = 1; i < state.CaliPoints; ++i) {
        const double a = state.CaliE[At(i)], b = state.CaliE[At(i + 1)];
        if (e == a) return {StoredRow(state, i)};
        // A rising segment holds its lower end alone, a falling one both ends.
        if (!((e >= a && e < b) || (e <= a && e >= b))) continue;
        const double run = double{state.CaliLogC[At(i)]} - state.CaliLogC[At(i + 1)];
        return {FromLogC(state, ToSingle(state.CaliLogC[At(i)] - (e - a) * run / (b - a)), SampleValue::Source::Line)};
    }
    return {std::nullopt, DataOutOfRange};
}

SampleOutcome OnCurve(const CalibrationState& state, float e) {
    const float d = ToSingle(state.FitB * state.FitB - double{state.FitA} * 4 * (state.FitC - e));
    if (d < 0 || state.FitA == 0)
        return {std::nullopt, "Square-roots are negative, or division by zero; function cannot be used"};
    const double low = MinLogC(state), high = MaxLogC(state);
    const auto inRange = [&](double root) { return low <= root && root < high; };
    const double root1 = (-state.FitB + std::sqrt(double{d})) / (2 * double{state.FitA});
    if (inRange(root1)) return {FromLogC(state, root1, SampleValue::Source::FirstRoot)};
    const double root2 = (-state.FitB - std::sqrt(double{d})) / (2 * double{state.FitA});
    if (inRange(root2)) return {FromLogC(state, root2, SampleValue::Source::SecondRoot)};
    return {std::nullopt, DataOutOfRange};
}

/// A figure by a mask at the width it was worked out in.
std::string Shown(double value, bool single, const char* mask) {
    return single ? Format(static_cast<float>(value), mask) : Format(value, mask);
}

bool Extrapolated(const IseCalibration& calibration, float e) {
    if (calibration.CaliPoints < 2) return false;
    const auto first = calibration.CaliE.begin() + 1;
    const auto [low, high] = std::minmax_element(first, first + calibration.CaliPoints);
    return e < *low || e > *high;
}

}  // namespace

SampleOutcome SampleFromPotential(const CalibrationState& state, float e) {
    if (!(std::abs(e) <= 1000)) return {std::nullopt, "Input data out of range(±1000 mV), please re-typy again."};
    try {
        if (state.LinearFit == 1) return OnLine(state, e);
        if (state.PartlyLinearFit == 1) return OnSegments(state, e);
        if (state.BestFitCurve == 1) return OnCurve(state, e);
    } catch (const RuntimeError&) {
        return {std::nullopt, DataOutOfRange};
    }
    return {};
}

std::optional<SampleResult> PotentialToSample(const CalibrationState& state, Prompts& prompts, float e) {
    const SampleOutcome outcome = SampleFromPotential(state, e);
    if (outcome.message) prompts.Message(outcome.message);
    if (!outcome.value) return std::nullopt;
    const auto& [logC, molar, ppm, source] = *outcome.value;
    const bool stored = source == SampleValue::Source::StoredRow;
    const bool second = source == SampleValue::Source::SecondRoot;
    return SampleResult{logC, ppm, Shown(logC, stored || source == SampleValue::Source::Line, "#0.00"),
                        Shown(molar, stored, second ? "0.0E-0" : "#.00E-0"), Shown(ppm, stored, "#0.00")};
}

std::string SampleRemark(const CalibrationState& state, float e) {
    const bool linear = state.LinearFit == 1;
    struct Case {
        bool holds;
        const char* text;
    };
    const Case cases[] = {
        {linear && state.CaliPoints == 2 && e == state.CaliE[0],
         "With two points exactly 0 mV shows the empty row 0, not a result; 0.01 mV is worked out."},
        {linear && state.CaliSlope == 0, "The slope is 0: no concentration follows from it."},
        {linear && Extrapolated(state, e), "The potential lies outside the calibration points: the line is extended."},
        {state.IonIndex == NoIon, "No ion is selected: ppm reads 0."},
        {state.SampleCount > 100, "The graph holds 101 samples: further ones are not marked until 'Refresh'."},
    };
    std::string remark;
    for (const Case& c : cases) {
        if (!c.holds) continue;
        if (!remark.empty()) remark += ' ';
        remark += c.text;
    }
    return remark;
}

std::string SampleRow(int existingRows, const std::string& time, const std::array<std::string, 7>& txtT) {
    const std::string ppm = Trim(txtT[3]).empty() ? std::string() : Format(Val(txtT[3]), "#0.00");
    const double celsius = Val(txtT[5]);
    const bool single = !Trim(txtT[5]).empty() && std::abs(celsius) < LargestCelsius;
    const std::string fahrenheit =
        single ? Format(CelsiusToFahrenheit(static_cast<float>(celsius)), "#0.0") : std::string("N/A");
    const std::string fields[] = {"", time, txtT[0], ppm, txtT[2], txtT[5], fahrenheit, txtT[4]};
    std::string row = Str(existingRows - 1);
    for (const std::string& field : fields)
        row += "\t" + field;
    return row;
}

}  // namespace kelvo
