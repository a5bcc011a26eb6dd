#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

// The dump file of a recording: its numbers (".PH", which no menu leads to).

/// The numbers of a recording.
struct RecordingDump {
    std::int16_t PointCount = 0;  ///< N, 0 to 200
    float ScaleSpan = 0;
    std::int16_t ChannelCount = 0;  ///< C, 0 to 6
    std::int16_t IntervalIndex = 0, ScaleIndex = 0;
    std::vector<std::array<float, 6>> Recording;  ///< points 0 to N; the file holds 1 to N
};
std::string RecordingDumpBytes(const RecordingDump& dump);
/// Stops filling at the end of the file. @throws RuntimeError 62 within the first five numbers, 6 or 9 for a count
/// or number that no recording has.
RecordingDump ReadRecordingDump(std::string_view bytes);

}  // namespace kelvo
