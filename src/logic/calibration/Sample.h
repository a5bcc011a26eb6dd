#pragma once

#include <memory>
#include <optional>
#include <string>

#include "calibration/Calibration.h"
#include "calibration/Potentiometry.h"
#include "core/RowFacts.h"

namespace kelvo {

/// A sample as it is measured: what its potential gives by the calibration that it rests on. It is worked out once, and
/// boxes, row, exports and prints show what stands here.
struct Sample {
    float mv = 0;
    std::string celsius;  ///< of the sample, as text; empty: not told
    SampleValue value;
    Uncertainty uncertainty;
    std::shared_ptr<const Calibration> calibration;

    /// What goes with its row: interval, what that holds, and the words beside it.
    RowFacts Facts() const;
    /// "Live: 35.6 ppm, 34.1 to 37.2 (95 %)", for one that is just being read; without an interval the concentration
    /// and the remarks.
    std::string LiveLine() const;
};

/// @return none where the potential gives no result
std::optional<Sample> MeasureSample(std::shared_ptr<const Calibration> calibration, float mv,
                                    const std::string& celsius);

/// "35.6 ppm, 34.1 to 37.2 (95 %)", the value with as many places as the bounds; the remarks follow behind "; ".
/// Without an interval the remarks alone.
std::string IntervalText(const RowFacts& facts);

}  // namespace kelvo
