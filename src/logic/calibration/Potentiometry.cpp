#include "calibration/Potentiometry.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "calibration/Calibration.h"
#include "core/Dialogs.h"

#include "core/Messages.h"
#include "core/TemperatureText.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double LargestCelsius = 1e30;  // beyond it no 32-bit Fahrenheit exists

SampleValue StoredRow(const CalibrationPoint& point) {
    return {point.logC, point.molar, point.ppm, SampleValue::Source::StoredRow};
}

SampleValue FromLogC(const Calibration& calibration, double logC, SampleValue::Source source) {
    const double molar = Finite(std::pow(10.0, logC));
    return {logC, molar, calibration.Ppm(molar), source};
}

SampleOutcome OnLine(const Calibration& calibration, float e) {
    // With two points the rows 0 and 1 have this shortcut, and row 2 has not: 0 mV shows the empty row 0.
    if (IsEmptyRow(calibration, e)) return {StoredRow({})};
    if (calibration.points.size() == 2 && e == calibration.points[0].mv) return {StoredRow(calibration.points[0])};
    return {FromLogC(calibration, ToSingle(Divide(e - calibration.intercept, calibration.slope)),
                     SampleValue::Source::Line)};
}

SampleOutcome OnSegments(const Calibration& calibration, float e) {
    for (std::size_t i = 1; i < calibration.points.size(); ++i) {
        const CalibrationPoint &from = calibration.points[i - 1], &to = calibration.points[i];
        const double a = from.mv, b = to.mv;
        if (e == from.mv) return {StoredRow(from)};
        // A rising segment holds its lower end alone, a falling one both ends.
        if (!((e >= a && e < b) || (e <= a && e >= b))) continue;
        const double run = double{from.logC} - to.logC;
        return {FromLogC(calibration, ToSingle(from.logC - (e - a) * run / (b - a)), SampleValue::Source::Line)};
    }
    return {std::nullopt, DataOutOfRange};
}

SampleOutcome OnCurve(const Calibration& calibration, float e) {
    const auto& [a, b, c] = std::tie(calibration.a, calibration.b, calibration.c);
    const float d = ToSingle(b * b - double{a} * 4 * (c - e));
    if (d < 0 || a == 0)
        return {std::nullopt, "Square-roots are negative, or division by zero; function cannot be used"};
    if (calibration.points.empty()) return {std::nullopt, DataOutOfRange};
    const auto ends = std::ranges::minmax(calibration.points, {}, &CalibrationPoint::logC);
    const auto inRange = [&](double root) { return ends.min.logC <= root && root < ends.max.logC; };
    const double root1 = (-b + std::sqrt(double{d})) / (2 * double{a});
    if (inRange(root1)) return {FromLogC(calibration, root1, SampleValue::Source::FirstRoot)};
    const double root2 = (-b - std::sqrt(double{d})) / (2 * double{a});
    if (inRange(root2)) return {FromLogC(calibration, root2, SampleValue::Source::SecondRoot)};
    return {std::nullopt, DataOutOfRange};
}

/// Below the level that the curve has without any of the ion there is no concentration.
SampleOutcome OnLowEnd(const Calibration& calibration, float e) {
    const auto& fit = calibration.quality.lowEnd;
    if (!fit) return {std::nullopt, DataOutOfRange};
    const double seen = std::pow(10.0, Divide(e - fit->intercept, fit->slope));
    if (!(seen > fit->c)) return {std::nullopt, "Below the level of the low-end fit: no concentration follows."};
    return {FromLogC(calibration, ToSingle(std::log10(seen - fit->c)), SampleValue::Source::Line)};
}

/// A figure by a mask at the width it was worked out in.
std::string Shown(double value, bool single, const char* mask) {
    return single ? Format(static_cast<float>(value), mask) : Format(value, mask);
}

bool Extrapolated(const Calibration& calibration, float e) {
    if (calibration.points.size() < 2) return false;
    const auto [low, high] = std::ranges::minmax(calibration.points, {}, &CalibrationPoint::mv);
    return e < low.mv || e > high.mv;
}

}  // namespace

bool IsEmptyRow(const Calibration& calibration, float e) {
    return calibration.curve == Calibration::Curve::Line && calibration.points.size() == 2 && e == 0;
}

SampleOutcome SampleFromPotential(const Calibration& calibration, float e) {
    if (!(std::abs(e) <= 1000)) return {std::nullopt, "Input data out of range(±1000 mV), please re-typy again."};
    try {
        switch (calibration.curve) {
            case Calibration::Curve::Line: return OnLine(calibration, e);
            case Calibration::Curve::Segments: return OnSegments(calibration, e);
            case Calibration::Curve::BestFit: return OnCurve(calibration, e);
            case Calibration::Curve::LowEnd: return OnLowEnd(calibration, e);
            case Calibration::Curve::None: break;
        }
    } catch (const RuntimeError&) {
        return {std::nullopt, DataOutOfRange};
    }
    return {};
}

std::optional<SampleResult> PotentialToSample(const Calibration& calibration, Prompts& prompts, float e) {
    const SampleOutcome outcome = SampleFromPotential(calibration, e);
    if (outcome.message) prompts.Message(outcome.message);
    if (!outcome.value) return std::nullopt;
    const auto& [logC, molar, ppm, source] = *outcome.value;
    const bool stored = source == SampleValue::Source::StoredRow;
    const bool second = source == SampleValue::Source::SecondRoot;
    return SampleResult{logC, ppm, Shown(logC, stored || source == SampleValue::Source::Line, "#0.00"),
                        Shown(molar, stored, second ? "0.0E-0" : "#.00E-0"), Shown(ppm, stored, "#0.00")};
}

std::string SampleRemark(const Calibration& calibration, int drawn, float e) {
    const bool linear = calibration.curve == Calibration::Curve::Line;
    struct Case {
        bool holds;
        const char* text;
    };
    const Case cases[] = {
        {IsEmptyRow(calibration, e),
         "With two points exactly 0 mV shows the empty row 0, not a result; 0.01 mV is worked out."},
        {linear && calibration.slope == 0, "The slope is 0: no concentration follows from it."},
        {linear && Extrapolated(calibration, e),
         "The potential lies outside the calibration points: the line is extended."},
        {calibration.curve == Calibration::Curve::LowEnd && Extrapolated(calibration, e),
         "The potential lies outside the calibration points: the curve is extended."},
        {calibration.ion == NoIon, "No ion is selected: ppm reads 0."},
        {drawn > 100, "The graph holds 101 samples: further ones are not marked until 'Refresh'."},
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
    const std::string fahrenheit = single ? FahrenheitText(static_cast<float>(celsius)) : std::string("N/A");
    const std::string fields[] = {"", time, txtT[0], ppm, txtT[2], txtT[5], fahrenheit, txtT[4]};
    std::string row = Str(existingRows - 1);
    for (const std::string& field : fields)
        row += "\t" + field;
    return row;
}

}  // namespace kelvo
