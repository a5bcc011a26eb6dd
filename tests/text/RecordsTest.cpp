#include "text/Records.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

template <typename Step>
int CodeOf(Step step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        return error.Code();
    }
    return 0;
}

using Take = std::string (RecordReader::*)();

std::vector<std::string> All(const std::string& bytes, Take take) {
    RecordReader reader(bytes);
    std::vector<std::string> fields;
    while (!reader.AtEnd())
        fields.push_back((reader.*take)());
    EXPECT_EQ(CodeOf([&] { (reader.*take)(); }), 62);
    return fields;
}

using Fields = std::vector<std::string>;

TEST(RecordWriter, WritesOneValueALine) {
    RecordWriter writer;
    writer.Write(-61.5F);
    writer.Write(2.0F);
    writer.Write(1.5e-30F);
    writer.Write(std::string_view("Ag, 25 °C"));
    writer.Write(std::string_view());
    writer.Print("a\t\"b\"");
    EXPECT_EQ(writer.Bytes(),
              "-61.5\r\n2\r\n1.5E-30\r\n\"Ag, 25 \xB0"
              "C\"\r\n\"\"\r\na\t\"b\"\r\n");
}

TEST(RecordWriter, RefusesWhatWouldNotComeBack) {
    RecordWriter writer;
    for (const char* text : {"a\r\nb", "a\nb", "a\r", "Ω"})
        EXPECT_EQ(CodeOf([&] { writer.Write(std::string_view(text)); }), 5) << text;
    EXPECT_EQ(CodeOf([&] { writer.Print("Ω"); }), 5);
    EXPECT_EQ(CodeOf([&] { writer.Write(std::numeric_limits<float>::infinity()); }), 6);
    EXPECT_EQ(writer.Bytes(), "");
}

TEST(Records, TextsComeBack) {
    const struct {
        const char* text;
        const char* line;
    } rows[] = {
        {"Miller, J.", "\"Miller, J.\"\r\n"},
        {" 7.01", "\" 7.01\"\r\n"},
        {"A \"B\"", "\"A \"B\"\"\r\n"},
        {"\"A\"", "\"\"A\"\"\r\n"},
        {"\"", "\"\"\"\r\n"},
        {"A \"B\", C", "\"A \"B\", C\"\r\n"},
        {"A \"B, C\"", "\"A \"\"B, C\"\"\"\r\n"},
        {"A\", \"B", "\"A\"\", \"\"B\"\r\n"},
        {"A\"\"B", "\"A\"\"\"\"B\"\r\n"},
        {"5\" tube, left", "\"5\"\" tube, left\"\r\n"},
        {"", "\"\"\r\n"},
    };
    RecordWriter all;
    for (const auto& row : rows) {
        RecordWriter writer;
        writer.Write(std::string_view(row.text));
        EXPECT_EQ(writer.Bytes(), row.line);
        all.Write(std::string_view(row.text));
    }
    RecordReader reader(all.Bytes());
    for (const auto& row : rows)
        EXPECT_EQ(reader.Text(), row.text);
    EXPECT_TRUE(reader.AtEnd());
}

TEST(RecordReader, SplitsFieldsByTheInputRule) {
    const struct {
        const char* name;
        std::string bytes;
        Fields fields;
    } rows[] = {
        {"nothing", "", {}},
        {"line ends of all kinds, the last one missing", "a\r\nb\nc\rd", {"a", "b", "c", "d"}},
        {"empty lines are fields", "a\r\n\r\n\n\rb\n", {"a", "", "", "", "b"}},
        {"comma outside quotes", "1,2,\"a,b\",3\r\n", {"1", "2", "a,b", "3"}},
        {"comma at the line end", "a,\r\nb\r\n", {"a", "", "b"}},
        {"old writers leave quotes as they are", "\"A \"B\"\"\r\n", {"A \"B\""}},
        {"line end ends an open quote", "\"abc,d\r\ne\r\n", {"\"abc,d", "e"}},
        {"blanks outside quotes", " \"a \" \t,b \r\n", {"a ", "b "}},
        {"code page", "\"\xB5g\"\r\n", {"µg"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(All(row.bytes, &RecordReader::Text), row.fields) << row.name;
}

TEST(RecordReader, TakesNumbersFromTheHead) {
    const std::string bytes = "-61.5\r\n\" 7.01\"\r\n12abc,1E5\nN/A\r\n3.5\r\n\"2.5\"\r\n1E39\r\n40000\r\n7";
    RecordReader reader(bytes);
    EXPECT_EQ(reader.Number(), -61.5F);
    EXPECT_EQ(reader.Number(), 7.01F);
    EXPECT_EQ(reader.Whole(), 12);
    EXPECT_EQ(reader.Number(), 100000.0F);
    EXPECT_EQ(reader.Number(), 0.0F);
    EXPECT_EQ(reader.Whole(), 4);
    EXPECT_EQ(reader.Whole(), 2);
    EXPECT_EQ(CodeOf([&] { reader.Number(); }), 6);
    EXPECT_EQ(CodeOf([&] { reader.Whole(); }), 6);
    EXPECT_EQ(reader.Whole(), 7);
    EXPECT_EQ(CodeOf([&] { reader.Number(); }), 62);
    EXPECT_EQ(CodeOf([&] { reader.Whole(); }), 62);
}

TEST(RecordReader, TakesItemsByTheListRule) {
    const struct {
        const char* name;
        std::string bytes;
        Fields items;
    } rows[] = {
        {"leading blanks and tabs fall away, others stay", " \t1\t2 \r\n", {"1\t2 "}},
        {"comma makes the rest of the line the next item", "1\t5,2\t7\r\n8\r\n", {"1\t5", "2\t7", "8"}},
        {"blanks behind the comma", "a, b\r\n", {"a", "b"}},
        {"quoted item ends at the next quote", "\"a,b\"c\",d\r\n", {"a,b", "d"}},
        {"rest behind the quote is passed over", "\"a\" \"b\"\t9\r\nc\r\n", {"a", "c"}},
        {"quote inside an item", "5\" tube, left\n", {"5\" tube", "left"}},
        {"open quote ends with its line", "\"a,b\r\nc\r\n", {"a,b", "c"}},
        {"empty lines and blank lines", "\r\n  \r\nx", {"", "", "x"}},
        {"comma at the end", "a,\r\nb,", {"a", "", "b"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(All(row.bytes, &RecordReader::Item), row.items) << row.name;
}

TEST(RecordReader, TakesWholeLines) {
    EXPECT_EQ(All(" a,\"b\r\n\n\xB0"
                  "C\rlast",
                  &RecordReader::Line),
              (Fields{" a,\"b", "", "°C", "last"}));
}

}  // namespace
}  // namespace kelvo
