#include "tables/DumpFile.h"

#include <functional>

#include "support/Joined.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

class DumpFileTest : public TableTest {
 protected:
    DumpFileTest() {
        state.AppPath = folder.Path();
        dump.Ion = 10;
        dump.CommentHeight = 280;
        dump.Comment = "Good measurement";
        dump.Box = {"100",  "25",      " 77",   "10",   "5.26E-4", " 10",    "200.00", "1.05E-2", "10",
                    "1000", "5.26E-2", "59.16", "25.0", "77.0",    "-120.5", "-61.34", "10.00",   "5.26E-4"};
    }
    MethodDump dump;
};

TEST_F(DumpFileTest, SavesToTheLetterAndNamesTheScreen) {
    files.Expect(folder / "method");
    EXPECT_EQ(SaveMethodDump(state, dump, StandardMethodFile, prompts, files),
              "STANDARD ADDITION METHOD:" + folder / "method.std");
    EXPECT_EQ(folder.Get("method.std"), Golden("METHOD.STD"));
    files.Expect(folder / "v1.old");
    EXPECT_EQ(SaveMethodDump(state, MethodDump(), SampleMethodFile, prompts, files),
              "SAMPLE ADDITION METHOD:" + folder / "v1.old");
    EXPECT_EQ(folder.Get("v1.old"), Golden("METHOD.SMP"));
}

TEST_F(DumpFileTest, OpensABareNameInTheProgramFolderAndTellsAMissingOne) {
    folder.Put("METHOD.STD", Golden("METHOD.STD"));
    MethodDump read;
    files.Expect("method.std");
    EXPECT_EQ(OpenMethodDump(state, read, StandardMethodFile, prompts, files),
              "SATNDARD ADDITION METHOD:" + folder / "method.std");
    // List semantics take the blank of a number away.
    EXPECT_EQ(Joined(read.Ion, read.CommentHeight, read.Comment, read.Box),
              "10|280|Good measurement|100,25,77,10,5.26E-4,10,200.00,1.05E-2,10,1000,5.26E-2,59.16,25.0,77.0,-120.5,"
              "-61.34,10.00,5.26E-4");
    prompts.ExpectMessage("File" + folder / "none.smp" + "Not Found.");
    files.Expect(folder / "none.smp");
    EXPECT_EQ(OpenMethodDump(state, read, SampleMethodFile, prompts, files),
              "SAMPLE ADDITION METHOD:" + folder / "none.smp");
}

/// @return number of the failure, 0 none
int Refused(const std::function<void()>& read) {
    try {
        read();
        return 0;
    } catch (const RuntimeError& failure) {
        return failure.Code();
    }
}

TEST_F(DumpFileTest, ReadsItemByItem) {
    const std::string boxes =
        "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12\r\n13\r\n14\r\n15\r\n16\r\n17\r\n";
    const struct {
        const char* name;
        std::string bytes;
        int error;
        const char *comment, *box0;
    } rows[] = {
        {"a comma in the comment shifts the boxes", " 3\r\n 285\r\nGood, really\r\n" + boxes, 0, "Good", "really"},
        {"the file may end behind the comment", " 3\r\n 285\r\nGood\r\n", 0, "Good", "100"},
        {"but not within the boxes", " 3\r\n 285\r\nGood\r\n7\r\n", 62, "Good", "7"},
        {"an ion that is not in the list", " 26\r\n 285\r\nx\r\n", 9, "Good measurement", "100"},
        {"an ion beyond 16 bits", "99999\r\n 285\r\nx\r\n", 6, "Good measurement", "100"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        MethodDump read = dump;
        EXPECT_EQ(Refused([&] { ReadMethodDump(read, row.bytes); }), row.error);
        EXPECT_EQ(read.Comment + "|" + read.Box[0], std::string(row.comment) + "|" + row.box0);
    }
}

TEST_F(DumpFileTest, RecordingNumbers) {
    RecordingDump recording;
    recording.PointCount = 2;
    recording.ScaleSpan = 7;
    recording.ChannelCount = 2;
    recording.ScaleIndex = 1;
    recording.Recording = {{9, 9}, {5, 6.98f}, {5.02f, -61.5f}};
    EXPECT_EQ(RecordingDumpBytes(recording), Golden("RECORD.PH"));
    const RecordingDump read = ReadRecordingDump(Golden("RECORD.PH"));
    EXPECT_EQ(read.Recording[2][1], -61.5f);
    EXPECT_EQ(read.Recording[0][0], 0) << "point 0 is not in the file";
    const std::pair<const char*, int> bad[] = {{"2\r\n7\r\n2\r\n0\r\n1\r\n5\r\n", 0}, {"2\r\n7\r\n", 62},
                                               {"201\r\n7\r\n1\r\n0\r\n0\r\n", 9},    {"-1\r\n7\r\n1\r\n0\r\n0\r\n", 9},
                                               {"2\r\n7\r\n7\r\n0\r\n0\r\n", 9},      {"2\r\n1E39\r\n", 6}};
    for (const auto& [bytes, error] : bad)
        EXPECT_EQ(Refused([&] { ReadRecordingDump(bytes); }), error) << bytes;
}

}  // namespace
}  // namespace kelvo::test
