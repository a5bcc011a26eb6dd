#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "statistics/OffsetLine.h"
#include "statistics/StraightLine.h"

namespace kelvo {

/// Standards as the statistics take them: LogC (of mol/L) and mV, in the order of entry.
struct Standards {
    std::vector<double> logC, mv;
    std::size_t Count() const { return logC.size(); }
};

/// How many of the standards differ in LogC.
int DifferentLogCs(const Standards& standards);

/// Where an electrode follows its line, and below which concentration it no longer does.
///
/// The linear range is the longest run of neighbouring standards, at least three, whose own line passes all of them
/// within `within` mV (of runs of one length the one with the least scatter) and is not flatter than `leastSlope`: what
/// an electrode gives that does not answer is no range. The detection limit is where that line
/// meets the level at the low end: LogC = (level − Eo)/S. The level is the mean of the lowest standards between which
/// the potential changes by less than a third of the line's slope.
/// Source of the intersection rule: IUPAC, Recommendations for nomenclature of ion-selective electrodes, Pure Appl.
/// Chem. 48 (1976) 127–132.
struct LinearRange {
    enum class Limit {
        CannotTell,  ///< fewer than four different standards, or no three of them on such a line
        NotReached,  ///< the lowest standard lies on the line, or leaves it towards more response
        AtMost,      ///< the lowest standard leaves the line but no level is reached: the limit lies below
        Reached,
    };
    bool found = false;
    double fromLogC = 0, toLogC = 0;  ///< lowest and highest standard of the range
    StraightLine line;                ///< through the standards of the range
    Limit limit = Limit::CannotTell;
    double detectionLogC = 0;  ///< of `AtMost` and `Reached`
    /// The 95 % interval of a limit that is reached, LogC: inverse prediction with the potentials of the level. None
    /// when it does not end within a factor of 100.
    struct Interval {
        double low = 0, high = 0;
    };
    std::optional<Interval> detection;
    int below = 0;  ///< standards below the range
    bool saturates =
        false;  ///< the standards above the range leave its line towards less response, the higher the more
};

/// @param within      mV, above 0
/// @param leastSlope  mV per decade, without sign
LinearRange FindLinearRange(const Standards& standards, double within, double leastSlope = 0);

/// E = Eo + S·log10(x + c), x in mol/L: the line of an electrode that sees the concentration c (of the ion itself from
/// blank and membrane, or of an interfering one) beside the standard.
using LowEndFit = OffsetLine;

/// @return none where the standards do not follow the formula, as `OffsetLine::Of`
std::optional<LowEndFit> FitLowEnd(const Standards& standards);

}  // namespace kelvo
