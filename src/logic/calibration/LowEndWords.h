#pragma once

#include <string>
#include <vector>

#include "calibration/LinearRange.h"

namespace kelvo {

struct Calibration;

/// The low-end fit in words, each figure with its 95 % interval.
struct LowEndWords {
    std::string c;      ///< "0.394 ppm, 0.346 to 0.447 (95 %)"; mol/L without a weight of the ion
    std::string slope;  ///< "-58.17 mV/decade, -59.36 to -56.97 (95 %)"
    std::string eo;     ///< "-128.4 mV, -132.0 to -124.8 (95 %)"
    std::string test;   ///< whether c differs from 0 (F test at 95 %)
};
/// @param gramsPerMole  of the ion, 0 not known
LowEndWords WordsOf(const LowEndFit& fit, double gramsPerMole);

/// What list and page tell of the curve that samples are read off where it is the low-end fit; empty for every other.
std::vector<std::string> LowEndLines(const Calibration& calibration);

}  // namespace kelvo
