#pragma once

#include <vector>

namespace kelvo {

/// Size and charge of an ion, 32-bit as the table holds them. The sign of the charge does not enter.
struct IonSize {
    const char* ion;
    float size;    ///< effective diameter of the hydrated ion, nm
    float charge;  ///< magnitude
};

/// Rows 0 to 23 in the order of the ion table.
const std::vector<IonSize>& IonSizes();

/// Highest ionic strength (mol/L) for which the coefficient is worked out.
constexpr double HighestStrength = 0.6;

/// Activity coefficient by the extended Debye–Hückel equation with a linear term,
/// log10 γ = −0.51 z² √I / (1 + 3.29 a √I) + 0.1 z² I, for water at 25 °C. The steps between are 32-bit.
/// @param strength  ionic strength, mol/L, 0 to 0.6
/// @return γ without a unit. Ca (a 0.6, z 2) at 0.1 mol/L: 0.439.
/// @throws RuntimeError 6 when a step overflows.
double ActivityCoefficient(float strength, const IonSize& ion);

}  // namespace kelvo
