#include "calibration/CaliList.h"

#include <cmath>

#include "calibration/Calibration.h"
#include "calibration/LowEndWords.h"

#include "text/Number.h"

namespace kelvo {
namespace {

std::string Field(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), '_') + text : text;
}

std::string SlopeField(const Calibration& calibration, std::size_t i) {
    if (i == 0) return calibration.points.size() == 1 ? Format(calibration.slope, "#0.00") : std::string();
    const std::optional<double> slope = calibration.SegmentSlope(i);
    const auto single = static_cast<float>(slope.value_or(0));
    if (!slope || !std::isfinite(single) || *slope == 0) return {};
    const std::string shown = Format(single, "00.00");
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

std::vector<std::string> CaliListRows(const Calibration& calibration) {
    std::vector<std::string> rows = {"Calibration Data:", "Total Slope:   " + Format(calibration.slope, "#0.00"),
                                     CaliListTemperature(calibration.celsius), "",
                                     Row("No._", "mV____", "ppm_____", "Slope")};
    for (std::size_t i = 0; i < calibration.points.size(); ++i) {
        const CalibrationPoint& point = calibration.points[i];
        rows.push_back(Row(TrimStr(static_cast<int>(i) + 1), Format(point.mv, "0.0"), Format(point.ppm, "0.00"),
                           SlopeField(calibration, i)));
    }
    const auto lowEnd = LowEndLines(calibration);
    if (!lowEnd.empty()) rows.push_back("");
    rows.insert(rows.end(), lowEnd.begin(), lowEnd.end());
    if (!calibration.leftOut.empty()) rows.insert(rows.end(), {"", "Left out:"});
    for (const LeftOutStandard& left : calibration.leftOut)
        rows.push_back(Row("-", Format(left.mv, "0.0"), Format(left.ppm, "0.00"), "") + " " + left.reason);
    return rows;
}

}  // namespace kelvo
