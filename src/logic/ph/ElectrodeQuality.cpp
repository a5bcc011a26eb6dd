#include "ph/ElectrodeQuality.h"

#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double GasConstant = 8.314462618, Faraday = 96485.33212, ZeroCelsius = 273.15;
constexpr double Millivolts = 1000, NeutralPh = 7;

}  // namespace

double TheoreticalPhSlope(double celsius) {
    return -Millivolts * GasConstant * std::log(10.0) / Faraday * (ZeroCelsius + celsius);
}

ElectrodeQuality JudgeElectrode(const BufferTable& table, int rows, double celsius) {
    const auto row = [&](int i) -> const auto& {
        return table.at(static_cast<std::size_t>(i));
    };
    double meanPh = 0, meanMv = 0;
    for (int i = 1; i <= rows; ++i) {
        meanPh += double{row(i)[1]} / rows;
        meanMv += double{row(i)[2]} / rows;
    }
    double products = 0, squares = 0;
    for (int i = 1; i <= rows; ++i) {
        products += (row(i)[1] - meanPh) * (row(i)[2] - meanMv);
        squares += (row(i)[1] - meanPh) * (row(i)[1] - meanPh);
    }
    ElectrodeQuality quality;
    quality.slope = products / squares;
    quality.percent = 100 * quality.slope / TheoreticalPhSlope(celsius);
    quality.offset = meanMv + quality.slope * (NeutralPh - meanPh);
    quality.sound = quality.percent >= ElectrodeQuality::LowestPercent &&
                    quality.percent <= ElectrodeQuality::HighestPercent &&
                    std::abs(quality.offset) <= ElectrodeQuality::LargestOffset;
    return quality;
}

std::string ElectrodeQualityText(int electrode, const ElectrodeQuality& quality, double celsius) {
    std::string text = "Electrode " + TrimStr(electrode) + ": slope " + Format(quality.slope, "#0.0") + " mV/pH, " +
                       Format(quality.percent, "#0.0") + " % of the theoretical one at " + Format(celsius, "#0.0") +
                       " °C, offset " + Format(quality.offset, "#0.0") + " mV at pH 7.";
    if (!quality.sound) text += " Clean or replace the electrode; check the buffers.";
    return text;
}

}  // namespace kelvo
