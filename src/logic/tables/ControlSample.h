#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/RowFacts.h"

namespace kelvo {

/// A sample of known concentration that is measured among the others: any whose number begins with the word.
struct ControlSample {
    std::string word;
    double target = 0;         ///< in the unit of the results
    double low = 0, high = 0;  ///< limits of the recovery, %
    bool operator==(const ControlSample&) const = default;
};

/// "QC 10 90 110; LFB 5 85 115": word, target and limits, one control after the other.
std::string ControlsText(const std::vector<ControlSample>& controls);
/// @return none and `told` where the text is none: which of them, and why. An empty text has no controls
std::optional<std::vector<ControlSample>> ControlsOf(std::string_view text, std::string& told);

/// The controls of the settings, section "Control Samples". What is no control there is passed over.
std::vector<ControlSample> ReadControls(const std::string& iniPath);
/// @return whether they stand in the settings
bool WriteControls(const std::vector<ControlSample>& controls, const std::string& iniPath);

/// The one of that sample number: the longest word that it begins with, without regard to case; null when none.
const ControlSample* ControlOf(const std::vector<ControlSample>& controls, std::string_view number);

/// Puts the control into the facts of a row, or takes it out with null. It goes with the row from then on: a changed
/// setting changes nothing.
void SetControl(RowFacts& facts, const ControlSample* control);

/// "recovery 98.2 % of 10 (93 to 104), within 90 to 110 %" of a concentration; the bounds are those of its interval.
/// Empty when the row is no control.
std::string RecoveryText(const RowFacts& facts, std::optional<double> value, std::optional<double> from,
                         std::optional<double> to);

/// The sample that a spiked one is of and the concentration that was added: "A7+10" is A7 with 10 added. None for other
/// numbers.
struct Spike {
    std::string sample;
    double added = 0;
};
std::optional<Spike> SpikeOf(const std::string& number);

}  // namespace kelvo
