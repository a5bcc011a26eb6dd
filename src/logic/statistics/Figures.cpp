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

constexpr double LeastPlain = 1e-3;

bool NeedsExponent(double value) {
    return value != 0 && (std::abs(value) < LeastPlain || std::abs(value) >= LargestPlain);
}

/// To the place of the second digit of `step`, with an exponent or without.
std::string ToThePlaceOf(double value, double step, bool exponent) {
    if (value == 0) return "0";
    constexpr int MostPlaces = 6, MostDigits = 9;
    const int places = 1 - Exponent(step);
    if (!exponent) return Format(value, Mask(std::clamp(places, 0, MostPlaces)));
    return Format(value, Mask(std::clamp(Exponent(value) + places, 1, MostDigits)) + "E-0");
}

/// A spread that is worth showing places for.
double Step(double value, double spread) {
    constexpr double LeastShare = 1e-6;
    return std::max(std::abs(spread), std::abs(value) * LeastShare);
}

}  // namespace

std::string WithPlacesOf(double value, double spread) {
    return ToThePlaceOf(value, Step(value, spread), NeedsExponent(value));
}

IntervalTexts WithInterval(double value, double low, double high) {
    double step = std::min(value - low, high - value);
    if (low != 0) step = std::min(step, std::abs(low));
    step = Step(std::max({std::abs(value), std::abs(low), std::abs(high)}), step);
    const bool exponent = NeedsExponent(value) || NeedsExponent(low) || NeedsExponent(high);
    return {ToThePlaceOf(value, step, exponent), ToThePlaceOf(low, step, exponent), ToThePlaceOf(high, step, exponent)};
}

SpreadTexts WithSpread(double value, double spread) {
    const double step = Step(value, spread);
    const bool exponent = NeedsExponent(std::max(std::abs(value), spread));
    return {ToThePlaceOf(value, step, exponent), ToThePlaceOf(spread, step, exponent)};
}

std::string BoundWithPlacesOf(double bound, double halfWidth) {
    return WithPlacesOf(bound, std::min(halfWidth, std::abs(bound)));
}

std::string WithPlaces(double value, int places) {
    return std::abs(value) < LargestPlain ? Format(value, Mask(places)) : Format(value, "0.00E-0");
}

}  // namespace kelvo
