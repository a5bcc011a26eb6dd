#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

struct IseCalibration;
struct StandardsTold;

/// One of all standards that were measured.
struct StandardEntry {
    float mv = 0, logC = 0, ppm = 0, molar = 0;
    std::string leftOut;  ///< why it does not count; empty: it does
    bool operator==(const StandardEntry&) const = default;
};

/// All standards in the order in which they were taken up, those that do not count at their places.
std::vector<StandardEntry> AllStandards(const IseCalibration& calibration);
/// Gives the calibration these standards: what counts into its arrays, the others into `LeftOut`. Nothing is fitted.
void PutStandards(IseCalibration& calibration, const std::vector<StandardEntry>& standards);
/// Why a calibration cannot be made of what counts: two standards of different concentrations must be left. Empty when
/// it can.
std::string WhyTooFew(const std::vector<StandardEntry>& standards);

/// The potentials of blanks, mV. @return none when a word of the text is no number
std::optional<std::vector<double>> BlanksOf(const std::string& text);
/// A day as "2026-11-27", from 1900 to 2999. @return none for any other text
std::optional<std::string> DayOf(const std::string& text);
/// Why these cannot be what is told of standards, a sentence; empty when they can.
std::string WhyNotTold(const StandardsTold& told);
/// "lot A12, expires 2026-10-01"; empty when neither is told.
std::string LotText(const StandardsTold& told);
/// "standards expired 2026-10-01" when that lies before the day, else empty.
std::string ExpiredText(const StandardsTold& told, const std::string& day);

}  // namespace kelvo
