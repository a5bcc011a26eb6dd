#pragma once

#include <optional>
#include <string>

namespace kelvo {

/// What an electrode of an ion answers to.
struct IonResponse {
    int charge = 0;     ///< with its sign; 0 not known
    std::string label;  ///< "Ca²⁺"
    std::string kind;   ///< "is a cation", "is an anion", or what else decides the sign
};

/// Response of a row of the ion table, 0 to 24; the custom ion and "none" have charge 0. Charges of the free ions in
/// water are those of the CRC Handbook of Chemistry and Physics (electrochemical series). NH3 has no charge: its
/// electrode is a pH electrode behind a membrane, whose potential falls by one decade's worth per decade of ammonia.
IonResponse ResponseOf(int ionIndex);

/// Response of an ion of the analyst's own. @param charge −4 to 4, not 0
IonResponse ResponseOf(const std::string& name, int charge);

/// Theoretical slope in mV per decade, (R·T/(z·F))·ln 10: positive for cations, negative for anions. CODATA 2018: R
/// 8.314462618 J/(mol·K), F 96485.33212 C/mol. Charge 1 at 25 °C is 59.159, charge −2 at 20 °C −29.083.
/// @param charge  not 0
/// @return none at or below absolute zero or when the temperature is no number.
std::optional<double> NernstSlope(int charge, double celsius);

}  // namespace kelvo
