#include "tables/DumpFile.h"

#include "text/Records.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr int MostPoints = 200;
constexpr int MostChannels = 6;

int InRange(int value, int least, int most) {
    if (value < least || value > most) throw RuntimeError(ErrorNumber::Subscript);
    return value;
}

}  // namespace

std::string RecordingDumpBytes(const RecordingDump& dump) {
    RecordWriter writer;
    for (const float number :
         {static_cast<float>(dump.PointCount), dump.ScaleSpan, static_cast<float>(dump.ChannelCount),
          static_cast<float>(dump.IntervalIndex), static_cast<float>(dump.ScaleIndex)})
        writer.Write(number);
    for (int j = 1; j <= dump.PointCount; ++j)
        for (int k = 0; k < dump.ChannelCount; ++k)
            writer.Write(dump.Recording.at(static_cast<std::size_t>(j)).at(static_cast<std::size_t>(k)));
    return writer.Bytes();
}

RecordingDump ReadRecordingDump(std::string_view bytes) {
    RecordReader reader(bytes);
    RecordingDump dump;
    dump.PointCount = static_cast<std::int16_t>(InRange(reader.Whole(), 0, MostPoints));
    dump.ScaleSpan = reader.Number();
    dump.ChannelCount = static_cast<std::int16_t>(InRange(reader.Whole(), 0, MostChannels));
    dump.IntervalIndex = static_cast<std::int16_t>(reader.Whole());
    dump.ScaleIndex = static_cast<std::int16_t>(reader.Whole());
    dump.Recording.resize(static_cast<std::size_t>(dump.PointCount) + 1);
    for (std::size_t j = 1; j < dump.Recording.size(); ++j)
        for (std::size_t k = 0; k < static_cast<std::size_t>(dump.ChannelCount); ++k) {
            if (reader.AtEnd()) return dump;
            dump.Recording[j][k] = reader.Number();
        }
    return dump;
}

}  // namespace kelvo
