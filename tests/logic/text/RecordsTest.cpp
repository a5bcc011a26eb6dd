#include "text/Records.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "text/CodeOf.h"

namespace kelvo::test {
namespace {

using Fields = std::vector<std::string>;
using Take = std::string (RecordReader::*)();

Fields All(const std::string& bytes, Take take) {
    RecordReader reader(bytes);
    Fields fields;
    while (!reader.AtEnd())
        fields.push_back((reader.*take)());
    EXPECT_EQ(CodeOf([&] { (reader.*take)(); }), 62);
    return fields;
}

TEST(RecordWriter, WritesOneValueALineAndRefusesWhatWouldNotComeBack) {
    RecordWriter writer;
    writer.Write(-61.5F);
    writer.Write(1.5e-30F);
    writer.Write(std::string_view("Ag, 25 ° C"));
    writer.Print("a\t\"b\"");
    for (const char* text : {"a\r\nb", "a\nb", "a\r", "Ω"})
        EXPECT_EQ(CodeOf([&] { writer.Write(std::string_view(text)); }), 5) << text;
    EXPECT_EQ(CodeOf([&] { writer.Print("Ω"); }), 5);
    EXPECT_EQ(CodeOf([&] { writer.Write(std::numeric_limits<float>::infinity()); }), 6);
    EXPECT_EQ(writer.Bytes(), "-61.5\r\n1.5E-30\r\n\"Ag, 25 \xB0 C\"\r\na\t\"b\"\r\n");
}

TEST(Records, TextsComeBack) {
    const char* const rows[][2] = {
        {"Miller, J.", R"("Miller, J.")"},  {" 7.01", R"(" 7.01")"},
        {R"(A "B")", R"("A "B"")"},         {R"(A "B", C)", R"("A "B", C")"},
        {R"(A "B, C")", R"("A ""B, C""")"}, {R"(A", "B)", R"("A"", ""B")"},
        {R"(A""B)", R"("A""""B")"},         {R"(5" tube, left)", R"("5"" tube, left")"},
    };
    RecordWriter writer;
    std::string expected;
    for (const auto& [text, line] : rows) {
        writer.Write(std::string_view(text));
        expected += std::string(line) + "\r\n";
    }
    EXPECT_EQ(writer.Bytes(), expected);
    RecordReader reader(expected);
    for (const auto& row : rows)
        EXPECT_EQ(reader.Text(), row[0]);
    EXPECT_TRUE(reader.AtEnd());
}

TEST(RecordReader, SplitsByTheRuleOfEachKind) {
    const auto field = &RecordReader::Text, item = &RecordReader::Item, line = &RecordReader::Line;
    const std::tuple<const char*, Take, std::string, Fields> rows[] = {
        {"line ends of all kinds, the last one missing", field, "a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"empty lines are fields", field, "a\r\n\r\n\n\rb\n", {"a", "", "", "", "b"}},
        {"comma outside quotes", field, "1,2,\"a,b\",3\r\n", {"1", "2", "a,b", "3"}},
        {"comma at the line end", field, "a,\r\nb\r\n", {"a", "", "b"}},
        {"line end ends an open quote", field, "\"abc,d\r\ne\r\n", {"\"abc,d", "e"}},
        {"blanks outside quotes", field, " \"a \" \t,b \r\n", {"a ", "b "}},
        {"leading blanks and tabs fall away, others stay", item, " \t1\t2 \r\n", {"1\t2 "}},
        {"comma makes the rest of the line the next item", item, "1\t5, 2\t7\r\n8\r\n", {"1\t5", "2\t7", "8"}},
        {"quoted item ends at the next quote", item, "\"a,b\"c\",d\r\n", {"a,b", "d"}},
        {"quote inside an item", item, "5\" tube, left\n", {"5\" tube", "left"}},
        {"open quote ends with its line", item, "\"a,b\r\nc\r\n", {"a,b", "c"}},
        {"empty lines and a comma at the end", item, "\r\n  \r\nx,", {"", "", "x"}},
        {"whole lines", line, " a,\"b\r\n\n\xB0 C\rlast", {" a,\"b", "", "° C", "last"}},
    };
    for (const auto& [name, take, bytes, fields] : rows)
        EXPECT_EQ(All(bytes, take), fields) << name;
}

TEST(RecordReader, TakesNumbersFromTheHead) {
    RecordReader reader("-61.5\r\n\" 7.01\"\r\n1E5,12abc\nN/A\r\n3.5\r\n\"2.5\"\r\n1E39\r\n40000\r\n7");
    for (const float number : {-61.5F, 7.01F, 100000.0F})
        EXPECT_EQ(reader.Number(), number);
    for (const int whole : {12, 0, 4, 2})
        EXPECT_EQ(reader.Whole(), whole);
    EXPECT_EQ(CodeOf([&] { reader.Number(); }), 6);
    EXPECT_EQ(CodeOf([&] { reader.Whole(); }), 6);
    EXPECT_EQ(reader.Whole(), 7);
    EXPECT_EQ(CodeOf([&] { reader.Number(); }), 62);
    EXPECT_EQ(CodeOf([&] { reader.Whole(); }), 62);
}

}  // namespace
}  // namespace kelvo::test
