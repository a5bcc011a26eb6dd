#include "tables/SampleList.h"

#include "support/Joined.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

TEST(SampleList, TakesALineASampleOrNothing) {
    const std::pair<std::string, std::string> rows[] = {
        {"A1\nA2\r\n\n  A3 \n", "A1,A2,A3"},
        {"Sample;Replicates\nA7;3\nQC1;1\nA8\n", "A7 (1 of 3),A7 (2 of 3),A7 (3 of 3),QC1,A8"},
        {"\xEF\xBB\xBFname,n\n\"Tap, \"\"old\"\"\",2\n", "Tap, \"old\" (1 of 2),Tap, \"old\" (2 of 2)"},
        {"Br\xFC"
         "cke\t2\n007\n1E5",
         "Brücke (1 of 2),Brücke (2 of 2),007,1E5"},
        {"A\nA\nB", "A (1 of 2),A (2 of 2),B"},
    };
    for (const auto& [text, left] : rows) {
        SampleList list;
        EXPECT_EQ(list.Take(text), "");
        EXPECT_EQ(Joined(list.Left()), left);
    }
    const std::pair<std::string, const char*> refused[] = {
        {"", "it holds no samples"},
        {"Sample\n", "it holds no samples"},
        {"A;2\n;3", "line 2: a sample without a number"},
        {"A;0", "line 1: \"0\" is no number of replicates, 1 to 99"},
        {"A;2,5", "line 1: \"2,5\" is no number of replicates, 1 to 99"},
        {"A;100", "line 1: \"100\" is no number of replicates, 1 to 99"},
        {"A\n" + std::string(65, 'x'), "line 2: a number of more than 64 characters"},
        {std::string("A\0B", 3), "line 1: this is no text"},
    };
    SampleList list;
    list.Take("kept");
    for (const auto& [text, told] : refused)
        EXPECT_EQ(list.Take(text), told);
    EXPECT_EQ(list.Next(), "kept") << "a list that is refused leaves the one before";
    std::string many;
    for (int i = 0; i < 1011; ++i)
        many += "A" + std::to_string(i) + ";99\n";
    EXPECT_EQ(list.Take(many), "line 1011: more than 100000 rows");
}

class ListedTable : public TableTest {
 protected:
    void Open(const std::string& text) {
        folder.Put("list.csv", text);
        files.Expect(folder / "list.csv");
        logic.OpenSampleList();
    }
    void Measure(const char* number = "") {
        logic.AddRow(" 1\t" + std::string(number) + "\t09:05\t30\t35.85\t1.89E-3\t25");
    }
    std::string Numbers() const {
        std::vector<std::string> numbers;
        for (int row = 1; row < table.Rows() - 1; ++row)
            numbers.emplace_back(table.Cell(row, 1));
        return Joined(numbers);
    }
};

TEST_F(ListedTable, RowsAreOfTheListOneAfterTheOther) {
    Open("A7;2\nQC\nA8");
    EXPECT_EQ(state.StatusMessage, "Next sample: A7 (1 of 2); 4 rows left.");
    Measure();
    EXPECT_EQ(logic.NumberInHand(), "A7");
    logic.DropRow();
    EXPECT_EQ(logic.NextSample(), "Next sample: A7 (1 of 2); 4 rows left")
        << "what was cancelled is still to be measured";
    Measure();
    logic.NumberRow("A7");
    Measure("own");
    EXPECT_EQ(logic.NumberInHand(), "");
    Measure();
    logic.NumberRow("other");
    EXPECT_EQ(logic.NextSample(), "Next sample: A7 (2 of 2); 3 rows left") << "that row was of another sample";
    logic.SkipSample();
    Measure();
    Measure();
    Measure();
    EXPECT_EQ(Numbers(), "A7,own,other,QC,A8,");
    EXPECT_EQ(logic.NextSample(), "The list of samples is done.");
    EXPECT_TRUE(logic.TypeNumber(6, "hand\tmade"));
    EXPECT_EQ(table.Cell(6, 1), "hand made");
    EXPECT_FALSE(logic.TypeNumber(7, "x")) << "the empty row at the foot is no sample";
    logic.EndSampleList();
    EXPECT_EQ(logic.NextSample(), "");

    prompts.ExpectMessage("The list of samples has not been taken: line 1: a sample without a number.");
    Open(";2");
    Open("A9");
    state.TableOpen = 0;
    EXPECT_FALSE(logic.NumberIsOpen(1)) << "a table that is put away";
    Own(ScreenCode::frmDsply, -1);
    TablePresenter live(state, table, prompts, files, clock);
    live.AddRow(" 1\t\t09:05\t6.66");
    EXPECT_EQ(table.Cell(1, 1), "") << "no list for a table of pH";
}

}  // namespace
}  // namespace kelvo::test
