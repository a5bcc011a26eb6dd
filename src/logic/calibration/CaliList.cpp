#include "calibration/CaliList.h"

#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/IseCalibration.h"
#include "text/Number.h"

namespace kelvo {
namespace {

std::string Field(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), '_') + text : text;
}

std::string SlopeField(const IseCalibration& calibration, int i) {
    const auto at = static_cast<std::size_t>(i);
    if (i == 1) return calibration.CaliPoints == 1 ? Format(calibration.CaliSlope, "#0.00") : std::string();
    const std::optional<float> slope = PartialSlope(calibration, i);
    if (!slope || calibration.CaliE[at] == calibration.CaliE[at - 1]) return {};
    const std::string shown = Format(*slope, "00.00");
    return *slope < 0 ? shown : ' ' + shown;
}

std::string Row(const std::string& number, const std::string& mv, const std::string& ppm, const std::string& slope) {
    return Field(number, 4) + Field(mv, 7) + Field(ppm, 10) + Field(slope, 6);
}

}  // namespace

std::string CaliListTemperature(const std::string& temperature) {
    const bool known = !Trim(temperature).empty();
    return "Temperature:  " + (known ? Format(Val(temperature), "#0.00") : std::string());
}

std::vector<std::string> CaliListRows(const CalibrationState& state) {
    std::vector<std::string> rows = {"Calibration Data:", "Total Slope:   " + Format(state.CaliSlope, "#0.00"),
                                     CaliListTemperature(state.FileTemp), "",
                                     Row("No._", "mV____", "ppm_____", "Slope")};
    for (int i = 1; i <= state.CaliPoints; ++i) {
        const auto at = static_cast<std::size_t>(i);
        rows.push_back(
            Row(TrimStr(i), Format(state.CaliE[at], "0.0"), Format(state.CaliPpm[at], "0.00"), SlopeField(state, i)));
    }
    return rows;
}

}  // namespace kelvo
