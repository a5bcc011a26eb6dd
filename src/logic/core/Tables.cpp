#include "core/Tables.h"

#include <cmath>

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

float Weight(const IonTable& ions, int ion) {
    if (ion < 0 || ion >= IonRows) throw RuntimeError(ErrorNumber::Subscript);
    return ions.weights[static_cast<std::size_t>(ion)];
}

}  // namespace

const char* const HelpHeading = "  Help Sheet and Note pad";

// clang-format off: the columns are read beside one another.
IonTable StandardIons() {
    return {{"Ag", "Ba",  "Br",  "Ca",  "Cd",  "Cl", "ClO4", "CN", "CO3", "Cu",           "F",     "H", "Hg", "I", "K",
             "Na", "NH3", "NH4", "NO2", "NO3", "OH", "Pb",   "S",  "SCN", "pH(Hydrogen)", "Custom"},
            {107.8682f, 137.327f, 79.904f,   40.078f, 112.41f,   35.4527f, 99.4506f, 26.0179f,  60.0094f,
             63.546f,   18.9984f, 1.0079f,   200.59f, 126.9044f, 39.0983f, 22.9898f, 17.03061f, 18.0386f,
             46.0055f,  62.0049f, 17.00737f, 207.19f, 32.066f,   58.0819f, 1.0f,     100.0f}};
}
// clang-format on

const SensorTable& StandardSensor() {
    static const SensorTable table = {{966.8f, 894.0f, 799.6f, 745.8f, 688.7f, 570.8f, 456.9f, 355.9f, 271.9f, 205.5f},
                                      {0, 10, 20, 25, 30, 40, 50, 60, 70, 80}};
    return table;
}

float SensorToCelsius(const SensorTable& table, float reading) {
    std::size_t i = 0;
    while (i < table.mv.size() && reading < table.mv[i])
        ++i;
    if (i == table.mv.size()) i = table.mv.size() - 1;
    if (i == 0) i = 1;
    if (table.celsius[i] == table.celsius[i - 1]) return 0;
    const double slope = (double{table.mv[i - 1]} - table.mv[i]) / (double{table.celsius[i]} - table.celsius[i - 1]);
    return static_cast<float>((double{table.mv[i - 1]} - reading) / slope + table.celsius[i - 1]);
}

float CelsiusToFahrenheit(float celsius) {
    return static_cast<float>(celsius * 1.8 + 32);
}

float FahrenheitToCelsius(float fahrenheit) {
    return static_cast<float>((fahrenheit - 32.0) / 1.8);
}

float PpmToMolar(const IonTable& ions, double ppm, int ion) {
    if (ion == NoIon) return 0;
    return ToSingle(Divide(ppm, double{Weight(ions, ion)} * 1000));
}

double MolarToPpm(const IonTable& ions, double molar, int ion) {
    if (ion == NoIon) return 0;
    return Finite(molar * 1000 * Weight(ions, ion));
}

double Log10(double x) {
    if (!(x > 0)) throw RuntimeError(ErrorNumber::InvalidCall);
    return std::log10(x);  // the quotient of two logarithms misses whole powers: ln 0.01 / ln 10 is -1.9999999999999996
}

const std::array<std::string, 8>& HelpTitles() {
    static const std::array<std::string, 8> titles = {
        "Calibration", "Direct Potentiometry",        "Standard Addtion",     "Sample Addtion",
        "Selectivity", "Conversion of Concentration", "Activity Cofficients", "pH Measurement"};
    return titles;
}

}  // namespace kelvo
