#include "tables/DumpFile.h"

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
    files.Expect("");
    EXPECT_EQ(SaveMethodDump(state, dump, SampleMethodFile, prompts, files), std::nullopt);
    prompts.ExpectMessage("Error76Saving" + folder / "no/a.std" + ":Path not found.");
    files.Expect(folder / "no/a");
    EXPECT_EQ(SaveMethodDump(state, dump, StandardMethodFile, prompts, files), std::nullopt);
}

TEST_F(DumpFileTest, OpensABareNameInTheProgramFolder) {
    folder.Put("METHOD.STD", Golden("METHOD.STD"));
    MethodDump read;
    files.Expect("method.std");
    EXPECT_EQ(OpenMethodDump(state, read, StandardMethodFile, prompts, files),
              "SATNDARD ADDITION METHOD:" + folder / "method.std");
    EXPECT_EQ(read.Ion, 10);
    EXPECT_EQ(read.CommentHeight, 280);
    EXPECT_EQ(read.Comment, "Good measurement");
    EXPECT_EQ(read.Box[2], "77") << "list semantics take the blank of Str away";
    EXPECT_EQ(read.Box[17], "5.26E-4");
}

TEST_F(DumpFileTest, MissingFileIsToldAndNamesTheScreenAllTheSame) {
    prompts.ExpectMessage("File" + folder / "none.smp" + "Not Found.");
    files.Expect(folder / "none.smp");
    EXPECT_EQ(OpenMethodDump(state, dump, SampleMethodFile, prompts, files),
              "SAMPLE ADDITION METHOD:" + folder / "none.smp");
    EXPECT_EQ(prompts.lastIcon, Icon::Exclamation);
    files.Expect(std::nullopt);
    EXPECT_EQ(OpenMethodDump(state, dump, SampleMethodFile, prompts, files), std::nullopt);
}

TEST_F(DumpFileTest, ReadsItemByItem) {
    struct Row {
        const char* name;
        std::string bytes;
        int error;
        const char* comment;
        const char* box0;
    };
    const std::string boxes =
        "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12\r\n13\r\n14\r\n15\r\n16\r\n17\r\n";
    const Row rows[] = {
        {"a comma in the comment shifts the boxes", " 3\r\n 285\r\nGood, really\r\n" + boxes, 0, "Good", "really"},
        {"the file may end behind the comment", " 3\r\n 285\r\nGood\r\n", 0, "Good", "100"},
        {"but not within the boxes", " 3\r\n 285\r\nGood\r\n7\r\n", 62, "Good", "7"},
        {"an ion that the list does not have", " 26\r\n 285\r\nx\r\n", 9, "Good measurement", "100"},
        {"an ion beyond 16 bits", "99999\r\n 285\r\nx\r\n", 6, "Good measurement", "100"},
        {"empty", "", 62, "Good measurement", "100"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MethodDump read = dump;
        int error = 0;
        try {
            ReadMethodDump(read, row.bytes);
        } catch (const RuntimeError& failure) {
            error = failure.Code();
        }
        EXPECT_EQ(error, row.error);
        EXPECT_EQ(read.Comment, row.comment);
        EXPECT_EQ(read.Box[0], row.box0);
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
    EXPECT_EQ(ReadRecordingDump("2\r\n7\r\n2\r\n0\r\n1\r\n5\r\n").Recording[2][1], 0) << "stops at the end of the file";
    const std::pair<const char*, int> bad[] = {{"2\r\n7\r\n", 62},
                                               {"201\r\n7\r\n1\r\n0\r\n0\r\n", 9},
                                               {"-1\r\n7\r\n1\r\n0\r\n0\r\n", 9},
                                               {"2\r\n7\r\n7\r\n0\r\n0\r\n", 9},
                                               {"2\r\n1E39\r\n", 6}};
    for (const auto& [bytes, error] : bad) {
        try {
            ReadRecordingDump(bytes);
            ADD_FAILURE() << bytes;
        } catch (const RuntimeError& failure) {
            EXPECT_EQ(failure.Code(), error) << bytes;
        }
    }
}

}  // namespace
}  // namespace kelvo::test
