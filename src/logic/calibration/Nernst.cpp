#include "calibration/Nernst.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include "core/Tables.h"

namespace kelvo {
namespace {

struct Row {
    const char* label;
    int charge;
};

// clang-format off: in the order of the ion table.
constexpr std::array<Row, IonRows> Rows = {
    {{"Ag⁺", 1},  {"Ba²⁺", 2},   {"Br⁻", -1},  {"Ca²⁺", 2}, {"Cd²⁺", 2},  {"Cl⁻", -1},  {"ClO₄⁻", -1},
     {"CN⁻", -1}, {"CO₃²⁻", -2}, {"Cu²⁺", 2},  {"F⁻", -1},  {"H⁺", 1},    {"Hg²⁺", 2},  {"I⁻", -1},
     {"K⁺", 1},   {"Na⁺", 1},    {"NH₃", -1},  {"NH₄⁺", 1}, {"NO₂⁻", -1}, {"NO₃⁻", -1}, {"OH⁻", -1},
     {"Pb²⁺", 2}, {"S²⁻", -2},   {"SCN⁻", -1}, {"H⁺", 1},   {"", 0}}};
// clang-format on
constexpr int Ammonia = 16;

const char* KindOf(int charge) {
    return charge > 0 ? "is a cation" : "is an anion";
}

/// "²⁺" of 2, "⁻" of −1.
std::string Superscript(int charge) {
    constexpr std::array<const char*, 5> counts = {"", "", "²", "³", "⁴"};
    return std::string(counts.at(static_cast<std::size_t>(std::abs(charge)))) + (charge > 0 ? "⁺" : "⁻");
}

}  // namespace

IonResponse ResponseOf(int ionIndex) {
    if (ionIndex < 0 || ionIndex >= IonRows) return {};
    const Row& row = Rows[static_cast<std::size_t>(ionIndex)];
    const char* kind = ionIndex == Ammonia ? "makes its electrode answer like an anion's" : KindOf(row.charge);
    return {row.charge, row.label, row.charge == 0 ? "" : kind};
}

IonResponse ResponseOf(const std::string& name, int charge) {
    return {charge, name + Superscript(charge), KindOf(charge)};
}

std::optional<double> NernstSlope(int charge, double celsius) {
    constexpr double GasConstant = 8.314462618, Faraday = 96485.33212, ZeroCelsius = 273.15, Millivolts = 1000;
    const double kelvin = celsius + ZeroCelsius;
    constexpr double Hottest = 1e4;
    if (charge == 0 || !(kelvin > 0) || kelvin > Hottest) return std::nullopt;
    return Millivolts * GasConstant * kelvin / (charge * Faraday) * std::log(10.0);
}

}  // namespace kelvo
