#include "calibration/GraphWords.h"

#include "calibration/CaliGraph.h"
#include "calibration/CalibrationState.h"
#include "calibration/GraphState.h"
#include "calibration/IseCalibration.h"
#include "text/Number.h"

namespace kelvo {
namespace {

std::string Place(float logC, float mv) {
    return "LogC " + Format(logC, "#0.00") + " at " + Format(mv, "#0.0") + " mV";
}

std::string StandardsWords(const CalibrationState& state) {
    int outside = 0;
    std::string places;
    for (int i = 1; i <= state.CaliPoints; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const float logC = state.CaliLogC[at], mv = state.CaliE[at];
        if (!InFrame(XFromLogC(state, logC), YFromE(state, mv))) ++outside;
        places += (places.empty() ? ": " : ", ") + Place(logC, mv);
    }
    const std::string count = TrimStr(int{state.CaliPoints}) + (state.CaliPoints == 1 ? " standard" : " standards");
    return count + (outside == 0 ? "" : ", " + TrimStr(outside) + " outside the scale") + places + ".";
}

std::string CurveWords(const IseCalibration& calibration) {
    const bool line = calibration.CaliPoints == 1 || calibration.LinearFit == 1;
    if (line) return " Straight line, slope " + Format(calibration.CaliSlope, "#0.00") + " mV/dec.";
    if (calibration.PartlyLinearFit == 1) return " Straight pieces from standard to standard.";
    if (calibration.LowEndCurve == 1) return " Low-end fit.";
    return calibration.BestFitCurve == 1 ? " Best-fit curve." : "";
}

std::string SampleWords(const GraphState& graph) {
    if (graph.SampleCount <= 0) return {};
    const std::size_t last = static_cast<std::size_t>(graph.SampleCount) - 1;
    return " " + TrimStr(int{graph.SampleCount}) + (graph.SampleCount == 1 ? " sample" : " samples") +
           ", the last: " + Place(graph.SampleLogC.at(last), graph.SampleE.at(last)) + ".";
}

}  // namespace

std::string CaliGraphWords(const CalibrationState& state) {
    if (state.Graph.Empty()) return "No calibration is shown.";
    const std::string axes = "E from " + TrimStr(ScaleBottom(state.MvScaleIndex)) + " to " +
                             TrimStr(ScaleTop(state.MvScaleIndex)) + " mV over LogC from " +
                             TrimStr(ScaleLeft(state.LogCScaleIndex)) + " to " +
                             TrimStr(ScaleRight(state.LogCScaleIndex)) + ". ";
    return axes + StandardsWords(state) + CurveWords(state) + SampleWords(state);
}

std::string QualityPlotWords(const QualityPage& page) {
    std::string marked;
    for (std::size_t i = 0; i < page.marked.size(); ++i)
        if (page.marked[i]) marked += (marked.empty() ? "" : ", ") + TrimStr(static_cast<int>(i) + 1);
    return "E over LogC of " + TrimStr(static_cast<int>(page.rows.size())) +
           " standards with the line through them, and below it how far each lies from the line. " +
           (marked.empty() ? "None is marked." : "Marked: " + marked + ".") + " The table below has the figures.";
}

}  // namespace kelvo
