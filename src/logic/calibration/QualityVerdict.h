#pragma once

#include <string>
#include <vector>

#include "calibration/Quality.h"
#include "core/StateOf.h"

namespace kelvo {

/// Whether to go on with a calibration, in plain words.
struct Verdict {
    enum class Grade { Good, Usable, Doubtful, Untold };
    Grade grade = Grade::Untold;
    std::string reason;               ///< what decided, and what else was found
    std::string decisive;             ///< what decided alone
    std::vector<std::string> causes;  ///< the usual causes; empty when nothing is amiss
    std::string next;                 ///< what to do
    /// "good", "usable", "doubtful" or "cannot be told".
    const char* Word() const;
    /// "doubtful: the slope is 71.2 % of the theoretical one".
    std::string Line() const { return std::string(Word()) + ": " + reason; }
    /// The same with what decided alone, for places with little room.
    std::string ShortLine() const { return std::string(Word()) + ": " + decisive; }
};

/// The worst of what is found decides the grade; all that is found is told, the gravest first.
Verdict JudgeCalibration(const CalibrationQuality& quality, const IonResponse& ion, bool crossed,
                         const QualityLimits& limits);

/// The words of a doubtful calibration that stand beside every result of it, "calibration doubtful: the slope is 71.2 %
/// of the theoretical one"; empty for every other.
std::string DoubtOf(const Verdict& verdict);

/// Sentences that other places show as well.
namespace text {
extern const char* const TwoPoints;
extern const char* const KnownSlopeOnly;
extern const char* const OnTheLine;
extern const char* const OneConcentration;
extern const char* const OnePotential;
extern const char* const TwoConcentrations;
}  // namespace text

}  // namespace kelvo
