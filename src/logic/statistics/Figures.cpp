#include "statistics/Figures.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double LargestPlain = 1e6;

int Exponent(double value) {
    return static_cast<int>(std::floor(std::log10(std::abs(value))));
}

std::string Zeros(int count) {
    return std::string(static_cast<std::size_t>(count), '0');
}

/// The mask "0.00" with that many places.
std::string Mask(int places) {
    return places > 0 ? "0." + Zeros(places) : "0";
}

}  // namespace

std::string WithPlacesOf(double value, double spread) {
    if (value == 0) return "0";
    constexpr double LeastShare = 1e-6;
    constexpr double LeastPlain = 1e-3;
    constexpr int MostPlaces = 6, MostDigits = 9;
    const double step = std::max(std::abs(spread), std::abs(value) * LeastShare);
    const int places = 1 - Exponent(step);
    if (std::abs(value) >= LeastPlain && std::abs(value) < LargestPlain)
        return Format(value, Mask(std::clamp(places, 0, MostPlaces)));
    return Format(value, Mask(std::clamp(Exponent(value) + places, 1, MostDigits)) + "E-0");
}

std::string BoundWithPlacesOf(double bound, double halfWidth) {
    return WithPlacesOf(bound, std::min(halfWidth, std::abs(bound)));
}

std::string WithPlaces(double value, int places) {
    return std::abs(value) < LargestPlain ? Format(value, Mask(places)) : Format(value, "0.00E-0");
}

}  // namespace kelvo
