#include "ph/ElectrodeQuality.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double GasConstant = 8.314462618, Faraday = 96485.33212, ZeroCelsius = 273.15;
constexpr double Millivolts = 1000, NeutralPh = 7;

ElectrodeQuality OrderOf(const BufferTable& table, int rows) {
    BufferTable byPh(table.begin() + 1, table.begin() + 1 + rows);
    std::stable_sort(byPh.begin(), byPh.end(), [](const auto& a, const auto& b) { return a[1] < b[1]; });
    ElectrodeQuality quality;
    int rises = 0, falls = 0;
    for (std::size_t i = 1; i < byPh.size(); ++i) {
        if (byPh[i][1] == byPh[i - 1][1]) quality.twice = byPh[i][1];
        rises += byPh[i][2] > byPh[i - 1][2] ? 1 : 0;
        falls += byPh[i][2] < byPh[i - 1][2] ? 1 : 0;
    }
    quality.ordered = std::max(rises, falls) == rows - 1;
    return quality;
}

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
    ElectrodeQuality quality = OrderOf(table, rows);
    if (squares > 0) quality.slope = products / squares;
    if (celsius > -ZeroCelsius) quality.percent = 100 * quality.slope / TheoreticalPhSlope(celsius);
    quality.offset = meanMv + quality.slope * (NeutralPh - meanPh);
    quality.sound = !quality.twice && quality.ordered && quality.percent >= ElectrodeQuality::LowestPercent &&
                    quality.percent <= ElectrodeQuality::HighestPercent &&
                    std::abs(quality.offset) <= ElectrodeQuality::LargestOffset;
    return quality;
}

std::string ElectrodeQualityText(int electrode, const ElectrodeQuality& quality, double celsius) {
    if (quality.twice)
        return "Electrode " + TrimStr(electrode) + ": two of its buffers have the same pH " + TrimStr(*quality.twice) +
               " and tell no slope between them. Calibrate again with different buffers.";
    std::string text = "Electrode " + TrimStr(electrode) + ": slope " + Format(quality.slope, "#0.0") + " mV/pH, " +
                       Format(quality.percent, "#0.0") + " % of the theoretical one at " + Format(celsius, "#0.0") +
                       " °C, offset " + Format(quality.offset, "#0.0") + " mV at pH 7.";
    if (!quality.ordered) text += " The potentials do not follow the pH from buffer to buffer.";
    if (!quality.sound) text += " Clean or replace the electrode; check the buffers.";
    return text;
}

std::string QualityDoubt(const ElectrodeQuality& quality) {
    if (quality.sound) return {};
    if (quality.twice) return "calibrated with two buffers of pH " + TrimStr(*quality.twice);
    return "judged bad: " + std::string(quality.ordered ? "" : "buffers out of order, ") + "slope " +
           Format(quality.percent, "#0.0") + " %, offset " + Format(quality.offset, "#0.0") + " mV";
}

}  // namespace kelvo
