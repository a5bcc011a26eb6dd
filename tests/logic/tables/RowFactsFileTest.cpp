#include "tables/RowFactsFile.h"

#include <gtest/gtest.h>

#include "TableFixture.h"
#include "text/Files.h"

namespace kelvo::test {
namespace {

DataTable TableOf(const std::vector<std::string>& rows) {
    DataTable table;
    table.SetHeads({"Sample", "mV"});
    for (const std::string& row : rows)
        table.AddItem(row, table.Rows() - 1);
    return table;
}

std::string Known(const DataTable& table) {
    std::string all;
    for (int row = 1; row < table.Rows(); ++row)
        all += table.Facts(row).Get(fact::Low) + "|";
    return all;
}

// The check was worked out by another program: python3 -c 'import zlib; print("%08x" % zlib.crc32(b"1\ta\t5"))'
TEST(RowFacts, StandInTheFileAsItsFormatSays) {
    DataTable table = TableOf({" 1\ta\t5", " 2\tb\t6"});
    table.SetFacts(1, {{"low", "1.2"}, {"unit", "µg \"x\""}});
    EXPECT_EQ(FactsBytes(table, "/home/lab/RUN.TAB", 2),
              "{\"format\":\"kelvo-rows\",\"version\":1,\"table\":\"RUN.TAB\"}\n"
              "{\"row\":1,\"check\":\"e90ff7dc\",\"low\":\"1.2\",\"unit\":\"µg \\\"x\\\"\"}\n");
    EXPECT_EQ(FactsBytes(table, "RUN.TAB", 0) + FactsLine(2, "2\tb", {}), "");
}

TEST(RowFacts, GoWithTheirRow) {
    DataTable table = TableOf({"1\ta", "2\tb", "3\tc"});
    table.SetFacts(2, {{"low", "B"}});
    table.AddItem("4\td", 1, {{"low", "D"}});
    EXPECT_EQ(Known(table), "D||B|||");
    table.RemoveItem(2);
    EXPECT_EQ(Known(DataTable(table)), "D|B|||");
    table.ClearCells(1, 0, 1);
    table.RemoveRowsFrom(3);
    EXPECT_EQ(Known(table), "|B|");
    table.Clear();
    EXPECT_EQ(Known(table), "|");
}

TEST(RowFacts, AreReadForTheRowsThatAreStillThose) {
    DataTable written = TableOf({" 1\ta\t5", " 2\tb\t6\t", " 3\tc\t7", " 3\tc\t7"});
    for (int row = 1; row <= 4; ++row)
        written.SetFacts(row, {{"low", std::to_string(row)}});
    const std::string bytes = FactsBytes(written, "RUN.TAB", 4);
    const std::string heading = FactsHeading("RUN.TAB");
    using Lines = std::vector<std::string>;
    // the rows of the table, the file; lines without a row, then what is known
    const std::tuple<const char*, Lines, std::string, std::string> cases[] = {
        {"blanks, empty cells", {"1\ta\t5", "2\tb\t6", "3\tc\t7\t\t", "3\tc\t7"}, bytes, "0 1|2|3|4||"},
        {"one changed", {"1\ta\t5", "2\tb\t66", "3\tc\t7", "3\tc\t7"}, bytes, "1 1||3|4||"},
        {"one put in before", {"0\tx", "1\ta\t5", "2\tb\t6"}, bytes, "2 |1|2||"},
        {"twins moved: which is which is not known", {"3\tc\t7", "3\tc\t7"}, bytes, "4 |||"},
        {"cut in the middle of a line", {"1\ta\t5", "2\tb\t6"}, bytes.substr(0, bytes.find("\"2\"")), "0 1|||"},
        {"odd lines",
         {"1\ta\t5"},
         heading +
             "[]\n\n{\"row\":\"1\"}\n{\"row\":1,\"check\":2}\n{\"row\":-7,\"check\":\"\"}\n{\"row\":4294967297,\"check\":\"\"}\n",
         "1 ||"},
        {"a newer version", {"1\ta\t5"}, "{\"format\":\"kelvo-rows\",\"version\":2}\n", "-1 ||"},
        {"a version beyond 32 bits", {"1\ta\t5"}, "{\"format\":\"kelvo-rows\",\"version\":4294967297}\n", "-1 ||"},
        {"another file", {"1\ta\t5"}, "{\"low\":1}\n" + bytes, "-1 ||"},
    };
    for (const auto& [name, rows, file, expected] : cases) {
        DataTable table = TableOf(rows);
        const int strangers = TakeFacts(table, file);
        EXPECT_EQ(std::to_string(strangers) + " " + Known(table), expected) << name;
    }
}

class FactsBesideTest : public TableTest {
 protected:
    std::string Reopened(const std::string& name) {
        files.Expect(folder / name);
        logic.LookAtFile();
        std::string all;
        for (const RowFacts& facts : logic.FactsLookedAt())
            all += facts.Get(fact::Low) + "|";
        return all + state.StatusMessage;
    }
};

TEST_F(FactsBesideTest, AreWrittenReadBackedUpAndRemovedWithTheTable) {
    const std::string row = " 1\tTap\t09:05\t-150.2", name = folder / "RUN.TAB", beside = name + ".rows";
    state.TableFile = name;
    logic.AddRow(row, {{"low", "3.0"}});
    logic.AddRow(" 2\tTap\t09:06\t-150");
    EXPECT_EQ(logic.KeepRows(), SaveOutcome::Saved);
    EXPECT_EQ(Reopened("run.tab"), "3.0||");
    logic.AddRow(" 3\tTap\t09:07\t-149", {{"low", "3.3"}});
    logic.KeepRows();
    EXPECT_EQ(Reopened("run.tab"), "3.0||3.3|");

    // Another table takes the name: what was known goes beside the backup.
    logic.Unload();
    state.TableFile = name;
    logic.AddRow(" 1\tWell\t10:00\t-100");
    logic.KeepRows();
    EXPECT_FALSE(FileExists(beside));
    EXPECT_EQ(Reopened("run.tab~"), "3.0||3.3|");

    // A file of the analyst's own, and one of a newer version, are left alone.
    for (const char* strange : {"my own list\n", "{\"format\":\"kelvo-rows\",\"version\":9}\n",
                                "{\"format\":\"kelvo-rows\",\"version\":4294967297}\n"}) {
        ReplaceWholeFile(beside, strange);
        logic.Working().SetFacts(1, {{"low", "9"}});
        logic.KeepRows();
        EXPECT_EQ(state.StatusMessage,
                  "Saved to RUN.TAB. What is known beside the rows is not kept: RUN.TAB.rows is another file.");
        EXPECT_EQ(ReadWholeFile(beside), strange);
    }
    ReplaceWholeFile(beside, FactsHeading("RUN.TAB") + FactsLine(1, "1\telse", {{"low", "7"}}));
    EXPECT_EQ(Reopened("run.tab"), "| 1 row is not as measured: what RUN.TAB.rows knows of it is not shown.");
}

}  // namespace
}  // namespace kelvo::test
