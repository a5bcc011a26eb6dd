#pragma once

#include <cstddef>
#include <optional>

#include "calibration/LinearRange.h"
#include "calibration/QualityLimits.h"
#include "statistics/StraightLine.h"

namespace kelvo {

/// Which standard is most likely not what it was entered as.
///
/// A wrong standard draws the line to itself, so that the largest residual is often another's. To suspect is the one
/// with the largest externally studentised residual: the one without which the others lie nearest to a line. With three
/// standards the other two always lie on one; there the theoretical slope decides, where only one of the three leaves a
/// slope that an electrode has.
struct WrongStandard {
    enum class Kind {
        None,      ///< no standard lies off the line by more than a good residual
        Swapped,   ///< `first` and `second` lie on the line once they are changed over
        Unit,      ///< `first` lies off by what a wrong unit makes
        Standard,  ///< `first` lies off
        Which,     ///< some standard does, but the figures cannot tell which
    };
    Kind kind = Kind::None;
    std::size_t first = 0, second = 0;
    double distance = 0;     ///< of `Unit` and `Standard`, mV above the line of the others
    double decades = 0;      ///< by how many decades more than entered the others see it to be
    const char* unit = "";   ///< of `Unit`: what was entered as what
    StraightLine rest = {};  ///< of a named one: the line of the others, or of all once changed over

    bool Named() const { return kind != Kind::None && kind != Kind::Which; }
    /// Whether point i is the named one or one of the two.
    bool Is(std::size_t i) const { return Named() && (i == first || (kind == Kind::Swapped && i == second)); }
};

/// @param theory        theoretical slope, mV per decade; none when not known
/// @param gramsPerMole  of the ion, 0 not known
WrongStandard FindWrongStandard(const Standards& standards, std::optional<double> theory, double gramsPerMole,
                                const QualityLimits& limits);

}  // namespace kelvo
