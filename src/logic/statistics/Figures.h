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

/// A number with a fixed count of places, 0 to 6; a value that rounds to zero has no sign. Too large a value has an
/// exponent.
std::string WithPlaces(double value, int places);

}  // namespace kelvo
