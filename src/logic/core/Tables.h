#pragma once

#include <array>
#include <string>

namespace kelvo {

/// Rows of the ion table. The order is the list index of every ion box and the ion number in every file.
constexpr int IonRows = 26;
constexpr int HydrogenIon = 24;  ///< shown as "pH" on the graph
constexpr int CustomIonRow = 25;
constexpr int NoIon = -1;

/// Names and molar masses (g/mol, 32-bit). Row 25 is the user's own ion and may be replaced.
struct IonTable {
    std::array<std::string, IonRows> names;
    std::array<float, IonRows> weights;
};

/// The table as it stands before any custom ion: row 24 has weight 1, row 25 is "Custom" with 100, and the
/// weight of Pb is 207.19.
IonTable StandardIons();

/// Raw readings of a temperature sensor and their degrees, ten pairs in falling order of the reading.
struct SensorTable {
    std::array<float, 10> mv;
    std::array<float, 10> celsius;
};
const SensorTable& StandardSensor();

/// Degrees Celsius of a raw sensor reading (mV-like ordinate): linear between the points of the table, the end
/// segments extended. Below 0 means that the sensor is not connected. 745.8 -> 25, 966.8 -> 0, 205.5 -> 80.
float SensorToCelsius(const SensorTable& table, float reading);

/// °F = °C · 1.8 + 32, and back; both in 32-bit floats.
float CelsiusToFahrenheit(float celsius);
float FahrenheitToCelsius(float fahrenheit);

/// mol/L of a concentration in ppm (mg/L): ppm / (weight · 1000), rounded to a 32-bit float. Ion -1 gives 0.
/// @throws RuntimeError 9 for an ion outside -1 to 25, 11 for a weight of 0, 6 on overflow.
float PpmToMolar(const IonTable& ions, double ppm, int ion);
/// ppm of a concentration in mol/L: molar · 1000 · weight. Ion -1 gives 0. @throws as PpmToMolar.
double MolarToPpm(const IonTable& ions, double molar, int ion);

/// ln x / ln 10, exact for powers of ten. @throws RuntimeError 5 when x is not above 0.
double Log10(double x);

/// Titles of the help sheets, topics 0 to 7, with Kelvo's own spelling.
const std::array<std::string, 8>& HelpTitles();
/// "  Help Sheet and Note pad".
extern const char* const HelpHeading;

}  // namespace kelvo
