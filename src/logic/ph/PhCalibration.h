#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kelvo {

/// Buffers of the two pH electrodes.
struct PhCalibration {
    std::array<std::int16_t, 3> BufferCount{};             ///< 1, 2: buffers of the electrode; 0: their sum
    std::array<std::string, 3> PhCaliDate;                 ///< 1, 2
    std::array<float, 3> PhCaliTemp{};                     ///< 1, 2: °C
    std::array<std::string, 3> PhCaliElectrode;            ///< 1, 2: serial number of the electrode calibrated
    std::vector<std::array<float, 3>> Buffers1, Buffers2;  ///< rows from 1: [1] pH, [2] mV
    bool PhCaliUnsaved = false;                            ///< it is in use, and no file holds it
};

/// One buffer on its way between the pH calibration and its dialog.
struct PhEntry {
    int PhElectrode = 1;               ///< 1 or 2, whose buffer it is
    std::string PhCaption, PhPrompt;   ///< "Electrode 1", and what is to be done
    std::int16_t PhCancelled = 0;      ///< -1 after Cancel
    std::array<std::string, 4> txtph;  ///< boxes of the dialog as OK left them: pH, mV, °C, °F
};

}  // namespace kelvo
