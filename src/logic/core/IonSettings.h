#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/Tables.h"

namespace kelvo {

/// The ion that is measured, and what is known of each.
struct IonSettings {
    IonTable Ions = StandardIons();                      ///< row 25 is the analyst's own
    std::int16_t IonIndex = NoIon;                       ///< 0 to 25, -1 none yet
    std::string CustomIon;                               ///< name of row 25
    float CustomWeight = 0;                              ///< g/mol of row 25
    std::string CaliTemp;                                ///< working temperature, °C as text
    std::array<std::array<std::string, 4>, 25> IonCali;  ///< last slope, temperature twice, date, by ion 0 to 24
};

}  // namespace kelvo
