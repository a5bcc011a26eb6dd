#include "text/Number.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

using namespace std::string_literals;

constexpr double LargestDouble = std::numeric_limits<double>::max();
constexpr double Infinity = std::numeric_limits<double>::infinity();

template <typename Step>
int CodeOf(Step step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        return error.Code();
    }
    return 0;
}

TEST(Val, TakesTheNumberAtTheHead) {
    const struct {
        std::string text;
        double number;
    } rows[] = {
        {"", 0},
        {" ", 0},
        {"12abc", 12},
        {" \t 7", 7},
        {"\n7", 0},
        {"1 2", 1},
        {"+5", 5},
        {"-.5", -0.5},
        {"5.", 5},
        {".", 0},
        {"-", 0},
        {"- 5", 0},
        {"--5", 0},
        {"+-5", 0},
        {".E5", 0},
        {"1.5.2", 1.5},
        {"1,5", 1},
        {"1E", 1},
        {"1E+", 1},
        {"1e-3x", 0.001},
        {"1.5E+02", 150},
        {"1D5", 1},
        {"0x1F", 0},
        {"inf", 0},
        {"nan", 0},
        {"-infinity", 0},
        {"N/A", 0},
        {"1\0"
         "2"s,
         1},
        {"1E308", 1e308},
        {"1E309", LargestDouble},
        {"-1E309", -LargestDouble},
        {std::string(400, '9'), LargestDouble},
        {"0." + std::string(400, '0') + "1E900", LargestDouble},
        {"1E99999999999999999999999", LargestDouble},
        {"0E99999999999999999999999", 0},
        {"1E-400", 0},
        {"-1E-99999999999999999999999", 0},
        {std::string(400, '9') + "E-900", 0},
        {"5E-324", 4.9406564584124654e-324},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Val(row.text), row.number) << row.text;
    for (const char* zero : {"-0", "-1E-400", "-0.0E5"})
        EXPECT_FALSE(std::signbit(Val(zero))) << zero;
}

TEST(Str, WritesTheShortestTextThatReadsBack) {
    const struct {
        double number;
        const char* text;
    } doubles[] = {
        {0, " 0"},
        {-0.0, " 0"},
        {0.5, " 0.5"},
        {-61.5, "-61.5"},
        {100, " 100"},
        {0.1, " 0.1"},
        {1e-5, " 0.00001"},
        {9.9e-6, " 9.9E-06"},
        {-1.5e-30, "-1.5E-30"},
        {123456789012345, " 123456789012345"},
        {1e14, " 100000000000000"},
        {1e15, " 1E+15"},
        {1.25e300, " 1.25E+300"},
    };
    for (const auto& row : doubles) {
        EXPECT_EQ(Str(row.number), row.text);
        EXPECT_EQ(TrimStr(row.number), Trim(row.text));
    }
    const struct {
        float number;
        const char* text;
    } floats[] = {
        {0.1F, " 0.1"},   {-59.16F, "-59.16"},          {207.19F, " 207.19"},  {1234567, " 1234567"},
        {1e7F, " 1E+07"}, {16777216, " 1.6777216E+07"}, {1.5e-3F, " 0.0015"},  {3.4e38F, " 3.4E+38"},
        {-0.0F, " 0"},    {1e-45F, " 1E-45"},           {9999999, " 9999999"}, {0.00001F, " 0.00001"},
    };
    for (const auto& row : floats) {
        EXPECT_EQ(Str(row.number), row.text);
        EXPECT_EQ(TrimStr(row.number), Trim(row.text));
    }
    EXPECT_EQ(Str(7), " 7");
    EXPECT_EQ(Str(0), " 0");
    EXPECT_EQ(Str(-2147483647 - 1), "-2147483648");
    EXPECT_EQ(TrimStr(-3), "-3");
    EXPECT_EQ(CodeOf([] { Str(Infinity); }), 6);
    EXPECT_EQ(CodeOf([] { TrimStr(std::nanf("")); }), 6);
}

TEST(Str, ReadsBackBitForBit) {
    std::mt19937_64 random(20261124);
    for (int i = 0; i < 200'000; ++i) {
        const auto wide = std::bit_cast<double>(random());
        const auto narrow = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(wide) || !std::isfinite(narrow)) continue;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(Val(Str(wide))), std::bit_cast<std::uint64_t>(wide)) << Str(wide);
        ASSERT_EQ(std::bit_cast<std::uint32_t>(ToSingle(Val(Str(narrow)))), std::bit_cast<std::uint32_t>(narrow))
            << Str(narrow);
    }
    // The only float whose shortest text reads, as a double rounded once more, as its neighbour.
    const float tie = 7.0385307e-26F;
    EXPECT_EQ(ToSingle(Val(Str(tie))), tie);
    EXPECT_EQ(ToSingle(Val(Str(-tie))), -tie);
}

TEST(Format, FollowsTheMask) {
    const struct {
        double number;
        const char* mask;
        const char* text;
    } rows[] = {
        // Places that are always there and places that come when needed.
        {0.5, "#0.00", "0.50"},
        {0.04, "#.0", ".0"},
        {0.05, "#.0", ".1"},
        {-0.5, "#.00", "-.50"},
        {59.16, "#.0", "59.2"},
        {0, "#", ""},
        {0.5, "#", "1"},
        {12.4, "#", "12"},
        {5, "#00", "05"},
        {7.5, "000.0", "007.5"},
        {3.14159, "00.00", "03.14"},
        {123.456, "0.0", "123.5"},
        {12.3, ".00", "12.30"},
        {25, "##0.00", "25.00"},
        {1.5, "0.###", "1.5"},
        {2, "0.###", "2."},
        {0.12345, "0.0##", "0.123"},
        {0.1, "0.#0#", "0.10"},
        {1e20, "0.0", "100000000000000000000.0"},
        // Rounding, on the decimal that one would write down.
        {2.675, "0.00", "2.68"},
        {1.005, "0.00", "1.01"},
        {-2.675, "0.00", "-2.68"},
        {0.5, "0", "1"},
        {1.5, "0", "2"},
        {2.5, "0", "3"},
        {2.4999999999999, "0", "2"},
        {2.499999999999999, "0", "3"},
        {99.995, "0.00", "100.00"},
        {9.96, "#.0", "10.0"},
        {0.0049999, "0.00", "0.00"},
        {-0.001, "0.00", "0.00"},
        {-0.004999, "#0.00", "0.00"},
        {-0.0, "0.0", "0.0"},
        {1e-300, "0.00", "0.00"},
        // Grouping.
        {1000, "0,000", "1,000"},
        {5, "0,000", "0,005"},
        {999.6, "0,000", "1,000"},
        {1000000, "0,000", "1,000,000"},
        {5, "#,##0.00", "5.00"},
        {123, "#,##0", "123"},
        {-1234.5, "#,##0.00", "-1,234.50"},
        {1234567.891, "#,##0.00", "1,234,567.89"},
        // Exponents.
        {0.001866, "#.00E-0", "1.87E-3"},
        {100.0 / 40078, "#.000E-0", "2.495E-3"},
        {0.0526356, "0.00E-00", "5.26E-02"},
        {52.6, "0.00E-00", "5.26E01"},
        {9.999, "0.00E-00", "1.00E01"},
        {0.09996, "0.00E-00", "1.00E-01"},
        {-0.001866, "#.00E-0", "-1.87E-3"},
        {1, "#.00E-0", "1.00E0"},
        {0, "#.00E-0", "0.00E0"},
        {0, "0.00E-00", "0.00E00"},
        {1e-100, "0.0E-0", "1.0E-100"},
        {52.6, "0.0E+00", "5.3E+01"},
        {0.526, "0.0E+00", "5.3E-01"},
        {1234, "00.0E-0", "12.3E2"},
        {0.05, ".00E-0", "5.00E-2"},
        {9.995e15, "#.00E-00", "1.00E16"},
        // Characters that stand for themselves.
        {7.01, "pH 0.0", "pH 7.0"},
        {-7.01, "<0.0 mV>", "-<7.0 mV>"},
        {20,
         "0.0 \xC2\xB0"
         "C",
         "20.0 \xC2\xB0"
         "C"},
        {3, "0E", "3E"},
        {3, "E-0", "E-3"},
        {3000, ",0", ",3000"},
        {3000, "0,", "3000,"},
        {7, "", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Format(row.number, row.mask), row.text) << row.number << " by " << row.mask;
    EXPECT_EQ(Format(1e308, "0").size(), 309U);
    EXPECT_EQ(
        Format(-1e308, "#,##0.0"), "-100" + [] {
            std::string groups;
            for (int i = 0; i < 102; ++i)
                groups += ",000";
            return groups;
        }() + ".0");
    for (const double bad : {Infinity, -Infinity, std::nan("")}) {
        EXPECT_EQ(CodeOf([bad] { Format(bad, "0.00"); }), 6);
        EXPECT_EQ(CodeOf([bad] { Format(static_cast<float>(bad), "0.00E-0"); }), 6);
    }
}

TEST(Format, TakesSevenDigitsOfAFloat) {
    const struct {
        float number;
        const char* mask;
        const char* text;
    } rows[] = {
        {0.285F, "0.00", "0.29"},  // the float itself is 0.28499999642...
        {2.675F, "0.00", "2.68"},  // 2.67499995231...
        {0.1F, "0.0000000000", "0.1000000000"},
        {16777216, "0", "16777220"},
        {-0.004F, "0.00", "0.00"},
        {59.155F, "#0.00", "59.16"},  // 59.15499877929...
        {1.2345e-4F, "0.000E-00", "1.235E-04"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Format(row.number, row.mask), row.text) << row.mask;
}

/// Two places by pencil: the 15 digits of the C library on a strip of zeros with the dot in its middle, a half
/// added behind the second place, the rest cut off.
std::string TwoPlacesByPencil(double value) {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.14e", std::fabs(value));
    constexpr std::size_t Middle = 400;
    std::string strip(2 * Middle, '0');
    const auto first = static_cast<std::size_t>(static_cast<int>(Middle) - 1 - std::atoi(std::strchr(digits, 'e') + 1));
    strip[first] = digits[0];
    for (std::size_t i = 1; i < 15; ++i)
        strip[first + i] = digits[i + 1];
    int carry = strip[Middle + 2] >= '5' ? 1 : 0;
    for (std::size_t at = Middle + 2; carry == 1 && at-- > 0;) {
        carry = strip[at] == '9' ? 1 : 0;
        strip[at] = carry == 1 ? '0' : static_cast<char>(strip[at] + 1);
    }
    const std::size_t start = std::min(strip.find_first_not_of('0'), Middle - 1);
    const std::string text = strip.substr(start, Middle - start) + '.' + strip.substr(Middle, 2);
    return value < 0 && text != "0.00" ? '-' + text : text;
}

TEST(Format, AgreesWithPencilAndPaper) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> power(-12, 18), thousandth(-3'000'000, 3'000'000);
    for (int i = 0; i < 200'000; ++i) {
        const double any = mantissa(random) * std::pow(10.0, power(random));
        ASSERT_EQ(Format(any, "0.00"), TwoPlacesByPencil(any)) << any;
        const double nearTie = thousandth(random) / 1000.0;
        ASSERT_EQ(Format(nearTie, "0.00"), TwoPlacesByPencil(nearTie)) << nearTie;
    }
}

TEST(Number, KnowsNoLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* commas : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, commas);
        EXPECT_EQ(Val("1.5"), 1.5) << commas;
        EXPECT_EQ(Str(1.5), " 1.5") << commas;
        EXPECT_EQ(Format(1234.5, "#,##0.00"), "1,234.50") << commas;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Number, NarrowsWithinRangeOnly) {
    const struct {
        double value;
        int whole;
    } rows[] = {{0.5, 0},   {1.5, 2},  {2.5, 2},          {-0.5, 0},          {-1.5, -2},
                {-2.5, -2}, {0.02, 0}, {32767.49, 32767}, {-32768.5, -32768}, {2.500001, 3}};
    for (const auto& row : rows)
        EXPECT_EQ(ToInt16(row.value), row.whole) << row.value;
    for (const double bad : {32767.5, -32768.51, 1e300, Infinity, std::nan("")})
        EXPECT_EQ(CodeOf([bad] { ToInt16(bad); }), 6) << bad;

    EXPECT_EQ(ToSingle(0.1), 0.1F);
    EXPECT_EQ(ToSingle(3.4028235e38), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle(-1e-60), 0);
    for (const double bad : {3.4028236e38, -1e39, Infinity, std::nan("")})
        EXPECT_EQ(CodeOf([bad] { ToSingle(bad); }), 6) << bad;
}

TEST(Texts, TrimUpperAndCompare) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_EQ(Trim("\ta \t"), "\ta \t");

    const struct {
        const char* text;
        const char* upper;
    } rows[] = {
        {"run_1.ise", "RUN_1.ISE"},
        {"é", "É"},
        {"àþ", "ÀÞ"},
        {"ÿ", "Ÿ"},
        {"œ", "Œ"},
        {"š", "Š"},
        {"ž", "Ž"},
        {"ß", "ß"},
        {"µ", "µ"},
        {"÷×", "÷×"},
        {"ƒ€ª", "ƒ€ª"},
        {"Äpfel", "ÄPFEL"},
        {"\xC3", "\xC3"},
        {"日a", "日A"},
        {"{`@", "{`@"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Upper(row.text), row.upper);

    EXPECT_TRUE(EqualNoCase("pH2Num", "ph2num"));
    EXPECT_FALSE(EqualNoCase("ph2Num", "ph2Nu"));
    EXPECT_FALSE(EqualNoCase("@", "`"));
    EXPECT_FALSE(EqualNoCase("é", "É"));
}

}  // namespace
}  // namespace kelvo
