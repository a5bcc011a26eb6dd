#pragma once

#include <optional>
#include <string>

#include "ph/PhValue.h"

namespace kelvo {

/// What the buffers say about a pH electrode.
struct ElectrodeQuality {
    double slope = 0;    ///< mV per pH of the least-squares line through all buffers; about -59 for a good electrode
    double percent = 0;  ///< of the theoretical slope at the buffers' temperature; negative for a reversed electrode
    double offset = 0;   ///< mV of that line at pH 7
    /// pH that two buffers share: they are one point of the line, whatever the rest of it makes of the slope.
    std::optional<float> twice;
    bool ordered = true;  ///< the potential goes one way from buffer to buffer
    bool sound = true;    ///< none of these, 90 to 105 %, and within ±30 mV

    static constexpr double LowestPercent = 90, HighestPercent = 105, LargestOffset = 30;
};

/// Slope of an ideal pH electrode, mV per pH: -(R·ln 10/F)·(273.15 + t), R and F of the SI since 2019. 25 °C: -59.16.
double TheoreticalPhSlope(double celsius);

/// Rows (7, 0 mV), (4, 177 mV) at 25 °C: slope -59, 99.7 %, offset 0.
/// @param rows how many buffers count, at least 2
ElectrodeQuality JudgeElectrode(const BufferTable& table, int rows, double celsius);

/// "Electrode 1: slope -59.0 mV/pH, 99.7 % of the theoretical one at 25.0 °C, offset 0.0 mV at pH 7." and, when it is
/// not sound, " Clean or replace the electrode; check the buffers." Buffers of one pH are told instead.
std::string ElectrodeQualityText(int electrode, const ElectrodeQuality& quality, double celsius);
/// The same in few words, to stand beside a value: "slope 84.5 %, offset 3.0 mV"; empty for a sound one.
std::string QualityDoubt(const ElectrodeQuality& quality);

}  // namespace kelvo
