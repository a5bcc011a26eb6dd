#include "addition/MethodFile.h"

#include "support/Joined.h"
#include "tables/TableFixture.h"
#include "text/CodeOf.h"

namespace kelvo::test {
namespace {

class MethodFileTest : public TableTest {
 protected:
    MethodFileTest() {
        state.AppPath = folder.Path();
        dump.Ion = 10;
        dump.CommentHeight = 280;
        dump.Comment = "Good measurement";
        dump.Box = {"100",  "25",      " 77",   "10",   "5.26E-4", " 10",    "200.00", "1.05E-2", "10",
                    "1000", "5.26E-2", "59.16", "25.0", "77.0",    "-120.5", "-61.34", "10.00",   "5.26E-4"};
    }
    MethodDump dump;
};

TEST_F(MethodFileTest, SavesEveryLineAndNamesTheScreen) {
    files.Expect(folder / "method");
    EXPECT_EQ(SaveMethodDump(state, dump, StandardMethodFile, prompts, files),
              "STANDARD ADDITION METHOD:" + folder / "method.std");
    EXPECT_EQ(folder.Get("method.std"), Golden("METHOD.STD"));
    files.Expect(folder / "v1.old");
    EXPECT_EQ(SaveMethodDump(state, MethodDump(), SampleMethodFile, prompts, files),
              "SAMPLE ADDITION METHOD:" + folder / "v1.old");
    EXPECT_EQ(folder.Get("v1.old"), Golden("METHOD.SMP"));
    for (const int comma : {-1, 4}) {
        MethodDump odd = dump;
        (comma < 0 ? odd.Comment : odd.Box[static_cast<std::size_t>(comma)]) = "1,5";
        files.Expect(folder / "odd.smp");
        EXPECT_TRUE(SaveMethodDump(state, odd, SampleMethodFile, prompts, files));
        EXPECT_EQ(
            state.StatusMessage,
            "Saved to odd.smp. It holds a comma: opened again, every box behind it will stand one place further on.");
    }
    files.Expect(folder / "none/x");
    prompts.ExpectMessage("Error76Saving" + folder / "none/x.smp" + ":Path not found.");
    EXPECT_EQ(SaveMethodDump(state, dump, SampleMethodFile, prompts, files), std::nullopt);
}

TEST_F(MethodFileTest, OpensABareNameInTheProgramFolderAndTellsWhatItCannotRead) {
    folder.Put("METHOD.STD", Golden("METHOD.STD"));
    files.Expect("method.std");
    const OpenedMethod opened = OpenMethodDump(state, StandardMethodFile, prompts, files);
    EXPECT_EQ(opened.caption, "SATNDARD ADDITION METHOD:" + folder / "method.std");
    ASSERT_TRUE(opened.dump);
    // List semantics take the blank of a number away.
    EXPECT_EQ(Joined(opened.dump->Ion, opened.dump->CommentHeight, opened.dump->Comment, opened.dump->Box),
              "10|280|Good measurement|100,25,77,10,5.26E-4,10,200.00,1.05E-2,10,1000,5.26E-2,59.16,25.0,77.0,-120.5,"
              "-61.34,10.00,5.26E-4");
    folder.Put("CUT.SMP", " 3\r\n");
    const std::string none = folder / "none.smp", cut = folder / "CUT.SMP";
    const std::tuple<std::string, std::string, std::string> rows[] = {
        {none, "File" + none + "Not Found.", "SAMPLE ADDITION METHOD:" + none},
        {cut, "Error62Opening" + cut + ":Input past end of file.", ""}};
    for (const auto& [name, message, caption] : rows) {
        prompts.ExpectMessage(message);
        files.Expect(name);
        const OpenedMethod missed = OpenMethodDump(state, SampleMethodFile, prompts, files);
        EXPECT_EQ(Joined(missed.dump.has_value(), missed.caption.value_or("")), "0|" + caption);
    }
}

TEST_F(MethodFileTest, ReadsItemByItem) {
    const std::string boxes =
        "1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10\r\n11\r\n12\r\n13\r\n14\r\n15\r\n16\r\n17\r\n";
    const std::string good = " 3\r\n 285\r\nGood\r\n", shifted = " 3\r\n 285\r\nGood, really\r\n" + boxes;
    // the file; error, comment, first box, more than there are boxes
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"a comma in the comment shifts the boxes", shifted, "0|Good|really|0"},
        {"and leaves one over", shifted + "18\r\n", "0|Good|really|1"},
        {"the file may end behind the comment", good, "0|Good|100|0"},
        {"no ion", "-1\r\n 285\r\nGood\r\n", "0|Good|100|0"},
        {"but not within the boxes", good + "7\r\n", "62|Good|7|0"},
        {"an ion that is not in the list", " 26\r\n 285\r\nx\r\n", "9|Good measurement|100|0"},
        {"an ion beyond 16 bits", "99999\r\n 285\r\nx\r\n", "6|Good measurement|100|0"},
    };
    for (const auto& [name, bytes, expected] : rows) {
        MethodDump read = dump;
        const int error = CodeOf([&read, &file = bytes] { ReadMethodDump(read, file); });
        EXPECT_EQ(Joined(error, read.Comment, read.Box[0], read.surplus), expected) << name;
    }
}

}  // namespace
}  // namespace kelvo::test
