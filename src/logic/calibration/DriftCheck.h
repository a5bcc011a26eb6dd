#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calibration/Calibration.h"
#include "core/RowFacts.h"

namespace kelvo {

/// When a standard is measured again among the samples, and how far it may have moved. Section `[Drift Checks]` of the
/// settings.
struct DriftSettings {
    int samples = 0;          ///< a check after so many samples; 0: not by their number
    double minutes = 0;       ///< a check after so many minutes; 0: not by time
    double limitMv = 1;       ///< mV either way; 0: not by potential
    double limitPercent = 0;  ///< of the standard's concentration, either way; 0: not by concentration
    int standard = 0;         ///< number of the standard in the calibration's list; 0: the one in the middle
    bool bracket = false;     ///< samples between two good checks are corrected

    bool On() const { return samples > 0 || minutes > 0; }
    bool operator==(const DriftSettings&) const = default;

    static constexpr int Numbers = 5;
    /// In the order of the fields, as typed.
    using Texts = std::array<std::string, Numbers>;
    Texts Typed() const;
    /// Takes the texts up. @return why they are refused, a sentence; nothing is taken then. Empty: taken
    std::string Take(const Texts& texts);
};
DriftSettings ReadDriftSettings(const std::string& iniPath);
/// @return whether they stand in the settings
bool WriteDriftSettings(const DriftSettings& settings, const std::string& iniPath);

/// A standard that is measured again.
struct CheckStandard {
    double logC = 0;
    double expected = 0;  ///< mV that it had in the calibration, the mean where it was measured more than once
    int count = 1;        ///< how often it was
    std::string name;     ///< "19.00 ppm"
};
/// @param number  in the list of the calibration, from 1; any other: the one nearest to the middle of the standards
/// @return none without a standard
std::optional<CheckStandard> CheckStandardOf(const Calibration& calibration, int number);

/// Has the electrode moved since it was calibrated? Follows the samples that are measured off one calibration and the
/// checks between them. A check is a row of the table like any other, of a standard instead of a sample.
///
/// The drift is the potential of the standard now less that in the calibration. With bracketing a sample at the time t
/// between the checks at t₁ and t₂ with the drifts d₁ and d₂ is corrected by −(d₁ + (d₂ − d₁)·(t − t₁)/(t₂ − t₁)); the
/// calibration is a check without drift at the time when the first sample after it was measured. What scatters in the
/// three potentials of the standard makes the correction uncertain. Without bracketing any drift up to the larger of d₁
/// and d₂ is as likely: a standard uncertainty of that by √3 (rectangular, GUM 4.3.7).
class DriftWatch {
 public:
    /// Goes on with that calibration; another one, or another curve of it, begins anew.
    void Follow(std::shared_ptr<const Calibration> calibration);
    /// A sample has been added to the table. @param seconds  of a clock that runs evenly
    void Add(int row, double millivolts, double seconds);
    /// The table has so many rows now. Samples beyond are gone: the last row was taken away again, or this is another
    /// table.
    void Keep(int rows);
    /// Facts that a sample has from its beginning: the last check has failed, and none has been good since.
    RowFacts FactsNow() const;
    bool Due(const DriftSettings& settings, double seconds) const;
    /// How many samples have been measured since the last good check.
    int Since() const { return static_cast<int>(samples_.size()); }

    struct Outcome {
        bool good = false;
        double drift = 0;                            ///< mV
        std::optional<double> percent;               ///< of the concentration; none where the curve does not say
        std::string words;                           ///< "drift check with 19.00 ppm: +0.52 mV, -2.0 %, within 1 mV"
        RowFacts facts;                              ///< of the check's own row
        std::vector<std::pair<int, RowFacts>> rows;  ///< what is to be added to the facts of samples before it
    };
    /// @param time  of the day, in words
    Outcome Check(const CheckStandard& standard, const DriftSettings& settings, double millivolts, double seconds,
                  const std::string& time);

 private:
    struct SampleSeen {
        int row = 0;
        double mv = 0, seconds = 0;
    };
    /// What a good check says of a sample before it.
    RowFacts Covered(const SampleSeen& sample, const CheckStandard& standard, bool bracket, double drift,
                     double seconds, const std::string& time) const;

    std::shared_ptr<const Calibration> calibration_;
    std::vector<SampleSeen> samples_;  ///< since the last good check
    double checkedAt_ = 0, drift_ = 0;
    bool begun_ = false;
    std::string checkedTime_;  ///< empty: the calibration itself
    std::string failed_;       ///< what the last check said when it failed; empty: it was good
};

/// What is told of a row: a check with its outcome, a sample that no check covers, a correction. Empty for others.
std::string DriftText(const RowFacts& facts);

}  // namespace kelvo
