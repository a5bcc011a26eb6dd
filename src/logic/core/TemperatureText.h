#pragma once

#include <optional>
#include <string>

namespace kelvo {

// Temperatures as the pairs of °C and °F boxes hold them, mask "#0.0". An empty text has no counterpart, since nobody
// has told a temperature: nothing is not 0 °C.

/// °F of °C, 77.0 of 25, and the other way round.
std::string FahrenheitText(float celsius);
std::string CelsiusText(float fahrenheit);
/// °F of a text in °C: "25" is "77.0". @throws RuntimeError 6 when one of the two is beyond a 32-bit number
std::string FahrenheitFrom(const std::string& celsius);
/// °C of a text in °F: "77" is "25.0". @throws RuntimeError 6 as above
std::string CelsiusFrom(const std::string& fahrenheit);
/// °F of a stored text, which may hold anything: empty where there is none.
std::string FahrenheitOrNone(const std::string& celsius);

/// °C to reckon with: the number at the head of the text. None where it or its °F is beyond 32 bits, and none at or
/// below absolute zero, where no formula of this program has a value.
std::optional<float> CelsiusOf(const std::string& text);

/// Both texts of one temperature, as they were taken last.
struct TemperaturePair {
    std::string celsius, fahrenheit;
    /// Takes what has been typed into one of the boxes and fills the other. @return false for a text that `CelsiusOf`
    /// or the other unit has no number for: the pair is as before
    bool Take(const std::string& typed, bool inFahrenheit);
};

}  // namespace kelvo
