#pragma once

#include <string>

namespace kelvo {

/// A number with as many places as its uncertainty is worth: the half width of its interval, or its deviation, keeps
/// two significant digits. 34.0613 with 1.55 is "34.1"; above 99 whole numbers; below a thousandth, or from a million
/// up, with an exponent as in "3.41E-5". A spread of 0 counts as a millionth of the value.
std::string WithPlacesOf(double value, double spread);

/// A bound of an interval by the half width of it; at least two digits of the bound itself count, also where the
/// interval reaches up much farther than down.
std::string BoundWithPlacesOf(double bound, double halfWidth);

/// A value beside the interval around it, all three with the same places: two significant digits of the nearer bound's
/// distance from the value, and at least two digits of the lower bound. So the value lies inside its interval as shown
/// too: 0.0723 in 0.07169 to 0.0728 is "0.07230", "0.07169" to "0.07280"; 43.15 in 6.157 to 302.4 is "43.2", "6.2" to
/// "302.4". Exponents as of `WithPlacesOf`, for all three where one of them needs it.
struct IntervalTexts {
    std::string value, low, high;
    /// "43.2 ppm, 6.2 to 302.4".
    std::string Line(const std::string& unit) const { return value + " " + unit + ", " + low + " to " + high; }
};
/// @param value  between low and high
IntervalTexts WithInterval(double value, double low, double high);

/// A value and its spread with the same places, two significant digits of the spread: −58 and 0.1897 are "-58.00" and
/// "0.19". @param spread  0 or above; 0 counts as for `WithPlacesOf`
struct SpreadTexts {
    std::string value, spread;
};
SpreadTexts WithSpread(double value, double spread);

/// A number with a fixed count of places, 0 to 6; a value that rounds to zero has no sign. Too large a value has an
/// exponent.
std::string WithPlaces(double value, int places);

}  // namespace kelvo
