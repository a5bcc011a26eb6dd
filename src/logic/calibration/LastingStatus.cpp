#include "calibration/CaliGraph.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationContext.h"
#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// The sample boxes and the warnings of a reading start from the working temperature; opening a file leaves it alone.
std::string TemperatureRemark(const CalibrationState& state) {
    const std::string made = Trim(state.FileTemp), working = Trim(state.CaliTemp);
    // A calibration just entered makes its temperature the working one as soon as it is saved.
    if (state.CaliPoints < 1 || state.CaliDirty == 1 || made.empty() || working.empty()) return {};
    if (Val(made) == Val(working)) return {};
    return "This calibration was made at " + made + " °C; the boxes show the working temperature, " + working + " °C.";
}

std::string DoubtRemark(const CalibrationState& state, const Calibration& calibration) {
    if (!RefusedFitRemark(state).empty()) return {};  // there is no line to doubt
    const std::string doubt = calibration.Doubt();
    return doubt.empty() ? doubt : "C" + doubt.substr(1) + " (Option, Calibration Quality).";
}

std::string LeftOutRemark(const IseCalibration& calibration) {
    const std::size_t left = calibration.CaliPoints < 1 ? 0 : calibration.LeftOut.size();
    if (left == 0) return {};
    return std::to_string(left) + " of " + std::to_string(left + static_cast<std::size_t>(calibration.CaliPoints)) +
           " standards " + (left == 1 ? "is" : "are") + " left out (Option, Standards).";
}

/// Samples are read off the line again unless another curve is chosen.
std::string SavedCurveRemark(const IseCalibration& calibration) {
    if (calibration.CaliPoints < 1 || calibration.LinearFit != 1 || calibration.SavedCurve.empty()) return {};
    return "It was saved with the " + calibration.SavedCurve + " as its curve of results.";
}

}  // namespace

std::string LastingStatus(const CalibrationState& state, const Calibration& calibration) {
    std::string lasting;
    for (const std::string& line : {RefusedFitRemark(state), PairingRemark(state), DoubtRemark(state, calibration),
                                    LeftOutRemark(state), TemperatureRemark(state), SavedCurveRemark(state),
                                    state.CaliPoints < 1 ? std::string() : state.FactsRemark}) {
        if (line.empty()) continue;
        lasting += (lasting.empty() ? "" : " ") + line;
    }
    return lasting;
}

std::string ScreenStatus(const CalibrationState& state, const Calibration& calibration) {
    const std::string lasting = LastingStatus(state, calibration), scale = ScaleRemark(state);
    return lasting + (lasting.empty() || scale.empty() ? "" : " ") + scale;
}

}  // namespace kelvo
