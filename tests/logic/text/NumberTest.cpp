#include "text/Number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "text/CodeOf.h"

namespace kelvo::test {
namespace {

using namespace std::string_literals;

constexpr double LargestDouble = std::numeric_limits<double>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(Val, TakesTheNumberAtTheHead) {
    const std::pair<std::string, double> rows[] = {{"12abc", 12},    {" \t 7", 7},     {"1 2", 1},      {"+5", 5},
                                                   {"-.5", -0.5},    {"5.", 5},        {"1.5.2", 1.5},  {"1,5", 1},
                                                   {"1E", 1},        {"1E+", 1},       {"1D5", 1},      {"1\0x"s, 1},
                                                   {"1e-3x", 0.001}, {"1.5E+02", 150}, {"1E308", 1e308}};
    for (const auto& [text, number] : rows)
        EXPECT_EQ(Val(text), number) << text;
    for (const char* nothing : {"", ".", "\n7", "- 5", "--5", "+-5", ".E5", "0x1F", "inf", "nan",
                                "0E999999999999999999999", "1E-400", "-1E-999999999999999999999", "-0", "-0.0E5"}) {
        EXPECT_EQ(Val(nothing), 0) << nothing;
        EXPECT_FALSE(std::signbit(Val(nothing))) << nothing;
    }
    for (const std::string& large : {"1E309"s, "1E999999999999999999999"s, "0." + std::string(400, '0') + "1E900"})
        EXPECT_EQ(Val(large), LargestDouble) << large;
    EXPECT_EQ(Val("-1E309"), -LargestDouble);
}

TEST(IsNumber, FromEndToEnd) {
    for (const char* number : {"7", "-.5", "+5.", "007", "1.5E-3", "1e400"})
        EXPECT_TRUE(IsNumber(number)) << number;
    for (const char* text :
         {"", ".", "+", "+-5", "12abc", "1E", "1E+", " 1", "1 ", "1,5", "1.5.2", "inf", "nan", "0x1F"})
        EXPECT_FALSE(IsNumber(text)) << text;
}

/// What `write` makes of each number, behind a bar.
template <typename Numbers, typename Write>
std::string Texts(const Numbers& numbers, Write write) {
    std::string texts;
    for (const auto number : numbers)
        texts += '|' + write(number);
    return texts;
}

TEST(Str, WritesTheShortestText) {
    const auto str = [](auto number) { return Str(number); };
    const std::vector<double> doubles = {-0.0, 0.5, -61.5, 0.1, 1e-5, 9.9e-6, -1.5e-30, 123456789012345, 1e15};
    EXPECT_EQ(Texts(doubles, str), "| 0| 0.5|-61.5| 0.1| 0.00001| 9.9E-06|-1.5E-30| 123456789012345| 1E+15");
    const std::vector<float> floats = {0.1F, -59.16F, 9999999, 1e7F, 16777216, -0.0F, 0.00001F};
    EXPECT_EQ(Texts(floats, str), "| 0.1|-59.16| 9999999| 1E+07| 1.6777216E+07| 0| 0.00001");
    EXPECT_EQ(Str(0) + Str(7) + Str(-2147483647 - 1) + TrimStr(3), " 0 7-21474836483");
    EXPECT_EQ(TrimStr(0.1) + TrimStr(0.1F) + TrimStr(-61.5), "0.10.1-61.5");
    EXPECT_EQ(CodeOf([] { Str(Infinity); }), 6);
    EXPECT_EQ(CodeOf([] { TrimStr(std::nanf("")); }), 6);
}

TEST(Str, ReadsBackBitForBit) {
    std::mt19937_64 random(20261124);
    for (int i = 0; i < 200'000; ++i) {
        const auto wide = std::bit_cast<double>(random());
        const auto narrow = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(wide) || !std::isfinite(narrow)) continue;
        ASSERT_EQ(Val(Str(wide)), wide);
        ASSERT_EQ(ToSingle(Val(Str(narrow))), narrow);
    }
    // The only float whose shortest text reads, as a double rounded once more, as its neighbour.
    EXPECT_EQ(ToSingle(Val(Str(7.0385307e-26F))), 7.0385307e-26F);
}

TEST(Format, FollowsTheMask) {
    const std::tuple<const char*, std::vector<double>, const char*> rows[] = {
        {"#0.00", {0.5, -0.004999}, "|0.50|0.00"},
        {"#.0", {0.04, 59.16, -0.5, 9.96}, "|.0|59.2|-.5|10.0"},
        {"0.0", {123.456, -0.0, 1e20}, "|123.5|0.0|100000000000000000000.0"},
        {"0.0##", {0.12345, 2}, "|0.123|2.0"},
        {"0.###", {1.5, 2}, "|1.5|2."},
        // Rounding, on the decimal that one would write down.
        {"0.00", {1.005, -2.675, 99.995, 1e-300}, "|1.01|-2.68|100.00|0.00"},
        {"0", {0.5, 2.5, 2.4999999999999, 2.499999999999999}, "|1|3|2|3"},
        {"0,000", {5, 999.6, 1e6}, "|0,005|1,000|1,000,000"},
        {"#,##0.00", {5, -1234.5, 1234567.891}, "|5.00|-1,234.50|1,234,567.89"},
        {"#.00E-0", {0.001866, -0.001866, 0}, "|1.87E-3|-1.87E-3|0.00E0"},
        {"0.00E-00", {0.0526356, 52.6, 9.999, 0.09996, 1e-100}, "|5.26E-02|5.26E01|1.00E01|1.00E-01|1.00E-100"},
        {"0.0E+00", {52.6, 0.526}, "|5.3E+01|5.3E-01"},
        {".00E-0", {0.05}, "|5.00E-2"},
        // Characters that stand for themselves.
        {"<0.0 °C>", {-7.01}, "|-<7.0 °C>"},
        {",0,", {3000}, "|,3000,"},
    };
    for (const auto& [mask, numbers, texts] : rows)
        EXPECT_EQ(Texts(numbers, [mask = mask](double number) { return Format(number, mask); }), texts) << mask;
    EXPECT_EQ(Format(1e308, "0").size(), 309U);
    // A float counts with seven digits: these are 0.28499999642..., 59.15499877929... and 16777216.
    EXPECT_EQ(Format(0.285F, "0.00") + Format(59.155F, "|0.00") + Format(16777216.0F, "|0"), "0.29|59.16|16777220");
    for (const double bad : {Infinity, -Infinity, std::nan("")}) {
        EXPECT_EQ(CodeOf([bad] { Format(bad, "0.00"); }), 6);
        EXPECT_EQ(CodeOf([bad] { Format(static_cast<float>(bad), "0.00E-0"); }), 6);
    }
}

TEST(Format, RoundsAsWholeNumbersDo) {
    for (int thousandths = -200'000; thousandths <= 200'000; ++thousandths) {
        const int cents = (std::abs(thousandths) + 5) / 10;
        char text[32];
        std::snprintf(text, sizeof text, "%s%d.%02d", thousandths < 0 && cents > 0 ? "-" : "", cents / 100,
                      cents % 100);
        ASSERT_EQ(Format(thousandths / 1000.0, "0.00"), text);
        ASSERT_EQ(Format(static_cast<float>(thousandths / 1000.0), "0.00"), text);
    }
}

TEST(Number, NarrowsWithinRangeOnly) {
    const std::pair<double, int> rows[] = {{0.5, 0},   {1.5, 2},      {2.5, 2},          {-0.5, 0},
                                           {-1.5, -2}, {2.500001, 3}, {32767.49, 32767}, {-32768.5, -32768}};
    for (const auto& [value, whole] : rows)
        EXPECT_EQ(ToInt16(value), whole) << value;
    for (const double bad : {32767.5, -32768.51, 1e300, Infinity, std::nan("")})
        EXPECT_EQ(CodeOf([bad] { ToInt16(bad); }), 6) << bad;
    EXPECT_EQ(ToSingle(3.4028235e38), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle(-1e-60), 0);
    for (const double bad : {3.4028236e38, -1e39, Infinity, std::nan("")})
        EXPECT_EQ(CodeOf([bad] { ToSingle(bad); }), 6) << bad;
}

TEST(Texts, TrimUpperAndCompare) {
    EXPECT_EQ(Trim("  a b  ") + '|' + Trim("   ") + '|' + Trim("\ta \t"), "a b||\ta \t");
    const char* const rows[][2] = {{"run_1.ise{`@", "RUN_1.ISE{`@"},
                                   {"éàþÿœšž", "ÉÀÞŸŒŠŽ"},
                                   {"ßµ÷×ƒ€ª", "ßµ÷×ƒ€ª"},
                                   {"\xC3", "\xC3"},
                                   {"日a", "日A"}};
    for (const auto& [text, upper] : rows)
        EXPECT_EQ(Upper(text), upper);
    EXPECT_TRUE(EqualNoCase("pH2Num", "ph2num"));
    EXPECT_FALSE(EqualNoCase("ph2Num", "ph2Nu") || EqualNoCase("@", "`") || EqualNoCase("é", "É"));
}

}  // namespace
}  // namespace kelvo::test
