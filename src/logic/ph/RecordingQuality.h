#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/RowFacts.h"
#include "core/StateOf.h"

namespace kelvo {

/// What has happened since the point before.
struct RecordingGap {
    int asleep = 0;    ///< points that fell due while the machine slept, and were not taken
    int heldUp = 0;    ///< points that nobody took although it was awake
    double slept = 0;  ///< seconds that it slept, 0 when it did not
    double late = 0;   ///< seconds that this point was taken behind its moment
};

/// @param missed  points that fell due and were not taken, `interval` seconds apart; as many of them as the machine
///                slept through are laid to that
RecordingGap GapOf(int missed, double late, double slept, double interval);

/// What has to be known of a reading to say what its value is worth.
struct ReadingFault {
    bool recorded = true;                ///< else the electrode is connected and not recorded: its cells hold no value
    std::optional<double> frameAge = 0;  ///< seconds that its frame was old; none: no frame had come at all
    bool old = false;                    ///< older than the interval or than three seconds
    bool oldInAverage = false;           ///< the rolling average still holds an old frame
    bool sensorOut = false;              ///< the temperature sensor of the electrode is not connected
    bool compensated = false;            ///< ATC was asked for
    bool uncalibrated = false;           ///< a pH electrode without buffers
    bool onePoint = false;               ///< an ISE calibration of one point
    std::string doubt = {};              ///< what the pH calibration in use leaves in doubt, parts joined by "; "
};

/// How good a recorded point is, in the words that go with its row wherever it goes: the status line, the file beside
/// the table, the table itself, its exports and prints. Read back from the file they mean the same again.
struct PointQuality {
    std::array<std::string, 2> words;  ///< of the two electrodes, parts joined by "; "; empty: nothing to say
    std::string remark;                ///< of the row: what is missing before it, sleep, delay
    std::array<bool, 2> old{};         ///< not a fresh value: hollow in the graph, greyed in its box

    bool Fresh() const { return !old[0] && !old[1]; }
    bool SensorOut(int electrode) const;
    bool Recorded(int electrode) const;
    bool Estimate(int electrode) const;  ///< no calibration stands behind the value, or one of a single point
};

/// "frame 12 s old", "sensor 1 not connected: no ATC"; empty when nothing is wrong. Electrodes count from 0.
std::string WordsOf(const ReadingFault& fault, int electrode);
/// "3 points missing before it: the machine slept".
std::string WordsOf(const RecordingGap& gap);

namespace fact {
inline constexpr const char* Ppm = "ppm";  ///< the whole value of an ISE point, of which its cell has whole numbers
}  // namespace fact

RowFacts FactsOf(const PointQuality& quality);
PointQuality QualityOf(const RowFacts& facts);

/// How the file beside a table is written. It is the tables' own, handed in by whoever wires the recording; without it
/// nothing is kept beside.
struct FactsText {
    std::function<std::string(const std::string& table)> heading;
    std::function<std::string(int row, std::string_view cells, const RowFacts& facts)> line;
    /// A table has been replaced: what stands beside it goes beside its backup.
    std::function<void(const std::string& table, const std::string& backup)> putAway;
};

/// Told where a recording by a calibration of one point is set up, runs or is looked up; empty for any other.
std::string OnePointRemark(const IseCalibration& calibration);

}  // namespace kelvo
