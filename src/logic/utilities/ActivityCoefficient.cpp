#include "utilities/ActivityCoefficient.h"

#include <cmath>

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

const std::vector<IonSize>& IonSizes() {
    static const std::vector<IonSize> sizes = {
        {"Ag", 0.25f, 1},   {"Ba", 0.5f, 2},  {"Br", 0.3f, 1},   {"Ca", 0.6f, 2},  {"Cd", 0.5f, 2},  {"Cl", 0.3f, 1},
        {"ClO4", 0.35f, 1}, {"CN", 0.3f, 1},  {"CO3", 0.45f, 2}, {"Cu", 0.6f, 2},  {"F", 0.35f, 1},  {"H", 0.9f, 1},
        {"Hg", 0.5f, 2},    {"I", 0.3f, 1},   {"K", 0.3f, 1},    {"Na", 0.45f, 1}, {"NH3", 0.4f, 1}, {"NH4", 0.25f, 1},
        {"NO2", 0.3f, 1},   {"NO3", 0.3f, 1}, {"OH", 0.35f, 1},  {"Pb", 0.45f, 2}, {"S", 0.5f, 2},   {"SCN", 0.35f, 1}};
    return sizes;
}

double ActivityCoefficient(float strength, const IonSize& ion) {
    const double z = ion.charge, root = std::sqrt(double{strength});
    const float den = ToSingle(double{ion.size} * 3.29 * root + 1);
    const float t = ToSingle(z * 0.51 * z * root / den);
    const float u = ToSingle(t - strength * (z * 0.1 * z));
    return Finite(std::pow(10.0, -double{u}));
}

}  // namespace kelvo
