#include "tables/DumpFile.h"

#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

TEST(DumpFile, RecordingNumbers) {
    RecordingDump recording;
    recording.PointCount = 2;
    recording.ScaleSpan = 7;
    recording.ChannelCount = 2;
    recording.ScaleIndex = 1;
    recording.Recording = {{9, 9}, {5, 6.98f}, {5.02f, -61.5f}};
    EXPECT_EQ(RecordingDumpBytes(recording), Golden("RECORD.PH"));
    const RecordingDump read = ReadRecordingDump(Golden("RECORD.PH"));
    EXPECT_EQ(Joined(read.Recording[2][1], read.Recording[0][0]), "-61.5|0") << "point 0 is not in the file";
    const std::pair<const char*, int> bad[] = {{"2\r\n7\r\n2\r\n0\r\n1\r\n5\r\n", 0}, {"2\r\n7\r\n", 62},
                                               {"201\r\n7\r\n1\r\n0\r\n0\r\n", 9},    {"-1\r\n7\r\n1\r\n0\r\n0\r\n", 9},
                                               {"2\r\n7\r\n7\r\n0\r\n0\r\n", 9},      {"2\r\n1E39\r\n", 6}};
    for (const auto& [bytes, error] : bad)
        EXPECT_EQ(CodeOf([&] { ReadRecordingDump(bytes); }), error) << bytes;
}

}  // namespace
}  // namespace kelvo::test
