#include "batch/LineReport.h"

#include <cmath>

#include "batch/Workplace.h"
#include "calibration/CaliSession.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/IseCalibration.h"
#include "calibration/Quality.h"
#include "calibration/QualityPage.h"
#include "calibration/QualityVerdict.h"
#include "core/Paths.h"
#include "core/StateOf.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Basis = CalibrationQuality::Basis;
constexpr const char* LogMolar = "log10(mol/L)";

Field Number(const char* key, const char* label, double value, const char* unit = "") {
    return NumberField(key, label, TrimStr(value), unit);
}

void AddCurve(Report& report, IseCalibration& calibration) {
    KeptMessages refused;
    if (calibration.CaliPoints < 3 || !FitBestCurve(calibration, refused)) return;
    report.fields.push_back(NumberField("a", "Best-fit curve, a", TrimStr(calibration.FitA), "mV per decade²",
                                        "(E = a·LogC² + b·LogC + c)"));
    report.fields.push_back(Number("b", "Best-fit curve, b", calibration.FitB, "mV per decade"));
    report.fields.push_back(Number("c", "Best-fit curve, c", calibration.FitC, "mV"));
}

void AddSegments(Report& report, const Calibration& calibration) {
    std::vector<std::string> slopes;
    for (std::size_t i = 1; i < calibration.points.size(); ++i) {
        const auto slope = calibration.SegmentSlope(i);
        slopes.push_back(slope && std::isfinite(static_cast<float>(*slope))
                             ? Format(static_cast<float>(*slope), "#0.00")
                             : std::string("N/A"));
    }
    if (!slopes.empty())
        report.fields.push_back(
            NumbersField("segment_slopes", "Slopes of the segments", std::move(slopes), "mV per decade"));
}

/// The unrounded figures, for machines.
void AddNumbers(Report& report, const CalibrationQuality& quality) {
    const StraightLine& line = quality.line;
    if (quality.theory)
        report.fields.push_back(Number("theoretical_slope", "Theoretical slope", *quality.theory, "mV per decade"));
    if (quality.percent)
        report.fields.push_back(Number("percent_of_theory", "Slope, % of theory", *quality.percent, "%"));
    report.fields.push_back(Number("celsius", "Temperature", quality.celsius, "°C"));
    if (line.n > 1) {
        report.fields.push_back(NumberField("degrees_of_freedom", "Degrees of freedom", TrimStr(line.Freedom())));
        report.fields.push_back(Number("r", "r", line.r));
        report.fields.push_back(Number("r2", "r²", line.r2));
    }
    if (line.n > 2) {
        report.fields.push_back(
            Number("slope_deviation", "Deviation of the slope", line.slopeDeviation, "mV per decade"));
        report.fields.push_back(
            Number("intercept_deviation", "Deviation of the intercept", line.interceptDeviation, "mV"));
        report.fields.push_back(Number("residual_deviation", "Residual deviation", line.residualDeviation, "mV"));
    }
    if (quality.range.found) {
        report.fields.push_back(Number("linear_from_logc", "Linear range from LogC", quality.range.fromLogC, LogMolar));
        report.fields.push_back(Number("linear_to_logc", "Linear range to LogC", quality.range.toLogC, LogMolar));
    }
    if (quality.range.limit == LinearRange::Limit::Reached)
        report.fields.push_back(
            Number("detection_limit_logc", "Detection limit, LogC", quality.range.detectionLogC, LogMolar));
}

Section PointsOf(const CalibrationQuality& quality) {
    std::vector<std::vector<std::string>> rows;
    for (const QualityPoint& point : quality.points)
        rows.push_back({TrimStr(point.logC), TrimStr(point.mv), TrimStr(point.fitted), TrimStr(point.residual),
                        TrimStr(point.percent), TrimStr(point.leverage)});
    return SectionOf("fitted", "Points", {"LogC", "mV", "Fitted mV", "Residual mV", "% of conc.", "Leverage"},
                     std::move(rows));
}

}  // namespace

void AddLine(Report& report, StateOf<CalibrationState, const Paths> state) {
    CalibrationState& calibration = state;
    const Paths& paths = state;
    KeptMessages refused;
    if (!CaliSession(state, refused).ShowLinear()) {
        report.fields.push_back(TextField("remark", "Remark", refused.Take()));
        return;
    }
    const Calibration made = CalibrationOf(calibration, ReadQualityLimits(paths.IniPath));
    const CalibrationQuality& quality = made.quality;
    report.fields.push_back(NumberField("slope", "Slope", SlopeText(state), "mV per decade"));
    report.fields.push_back(NumberField("intercept", "Intercept Eo", WithPlaces(calibration.CaliEo, 2), "mV"));
    if (quality.percent)
        report.fields.push_back(
            NumberField("percent_of_theory", "Slope, % of theory", WithPlaces(*quality.percent, 1), "%"));
    report.fields.push_back(TextField("verdict", "Verdict", made.verdict.Line()));
}

Report FitReport(CalibrationState& state, const QualityLimits& limits, int customCharge, bool figures) {
    const Calibration calibration = CalibrationOf(state, limits, customCharge);
    const CalibrationQuality& quality = calibration.quality;
    const Verdict& verdict = calibration.verdict;
    Report report;
    report.fields.push_back(NumberField("points", "Points", TrimStr(int{state.CaliPoints})));
    report.fields.push_back(NumberField("slope", "S", TrimStr(state.CaliSlope), "mV per decade", "(E = Eo + S·LogC)"));
    report.fields.push_back(Number("intercept", "Eo", state.CaliEo, "mV"));
    AddCurve(report, state);
    AddSegments(report, calibration);
    if (figures) {
        const QualityPage page = MakeQualityPage(calibration, false);
        for (const QualityPage::Figure& figure : page.figures)
            report.fields.push_back(TextField({}, figure.name, figure.value,
                                              figure.beside.empty() ? std::string() : "(" + figure.beside + ")"));
        report.sections.push_back(SectionOf("points", "Points", page.heads, page.rows));
    } else {
        AddNumbers(report, quality);
        report.sections.push_back(PointsOf(quality));
    }
    report.fields.push_back(TextField("verdict", "Verdict", figures ? verdict.Line() : verdict.Word()));
    if (!figures) report.fields.push_back(TextField("reason", "Reason", verdict.reason));
    for (const std::string& cause : verdict.causes)
        if (figures) report.fields.push_back(TextField({}, "Usual cause", cause));
    if (figures) report.fields.push_back(TextField({}, "What to do", verdict.next));
    return report;
}

}  // namespace kelvo
