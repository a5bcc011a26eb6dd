#pragma once

#include <array>
#include <optional>
#include <string>

namespace kelvo {

class Prompts;

struct Calibration;

/// What a potential says about a sample: LogC for the graph, and the texts of the three result boxes.
struct SampleResult {
    double LogC = 0;
    double ppm = 0;
    std::string LogCText;   ///< "#0.00"
    std::string MolarText;  ///< mol/L, "#.00E-0"; "0.0E-0" for the second root of the best-fit curve
    std::string PpmText;    ///< "#0.00"
};

/// A sample in figures, before it becomes text.
struct SampleValue {
    /// Where the figures come from: a row as entered, the line or a segment, or a root of the best-fit curve.
    enum class Source { StoredRow, Line, FirstRoot, SecondRoot };
    double LogC = 0, molar = 0, ppm = 0;
    Source source = Source::Line;
};

/// A sample or the message that says why there is none; neither when no curve is active.
struct SampleOutcome {
    std::optional<SampleValue> value;
    const char* message = nullptr;
};

/// The arithmetic of `PotentialToSample`. Never throws.
SampleOutcome SampleFromPotential(const Calibration& calibration, float e);

/// Whether the potential shows the empty row 0 instead of a result: exactly 0 mV on the line of two points.
bool IsEmptyRow(const Calibration& calibration, float e);

/// Reads a sample off the active curve, tested in the order linear, partly linear, best-fit.
///
/// Stored rows are shown without computing: linear with two points for E equal to `CaliE`[1] (row 1) and for E of
/// exactly 0 mV (the empty row 0, `SampleRemark` tells); partly linear for E equal to the start of a segment.
/// With E = −128.182 − 58·LogC of fluoride, 30 mV gives "-2.73", "1.87E-3" and "35.60".
/// @param e mV, at most ±1000
/// @return none after one message, or silently when no curve is active. A failure of the arithmetic, such as a
/// slope of 0 or an overflow of 10^LogC, is the message of `DataOutOfRange`.
std::optional<SampleResult> PotentialToSample(const Calibration& calibration, Prompts& prompts, float e);

/// A quiet line on what could silently mislead in a sample of this potential, empty when there is nothing: the
/// empty row of exactly 0 mV, a slope of 0, an extrapolation, no ion,
/// the graph's last place for samples.
/// @param drawn  samples that the graph shows
std::string SampleRemark(const Calibration& calibration, int drawn, float e);

/// The row of a sample for the data table: nine fields joined by TAB, in the order number, name (empty), time,
/// mV, ppm, mol/L, °C, °F, pH.
/// @param existingRows rows that the table holds, its head row included; the number is one less, as `Str`
/// @param time "hh:mm"
/// @param txtT the texts of the boxes `txtT`(0) to `txtT`(6) as they stand; an empty ppm stays empty, an empty °C has
/// "N/A" for °F
std::string SampleRow(int existingRows, const std::string& time, const std::array<std::string, 7>& txtT);

}  // namespace kelvo
