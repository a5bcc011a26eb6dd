#include "text/CodePage.h"

#include <gtest/gtest.h>

#include <string>

#include "text/RuntimeError.h"

namespace kelvo {
namespace {

TEST(CodePage, CrossesBothWays) {
    // Bytes from the table of the code page's maker.
    const struct {
        const char* bytes;
        const char* text;
    } rows[] = {
        {"pH 7\t\r\n", "pH 7\t\r\n"},
        {"25 \xB0"
         "C",
         "25 °C"},
        {"\x80\x82\x83\x84\x85\x86\x87", "€‚ƒ„…†‡"},
        {"\x88\x89\x8A\x8B\x8C\x8E", "ˆ‰Š‹ŒŽ"},
        {"\x91\x92\x93\x94\x95\x96\x97", "‘’“”•–—"},
        {"\x98\x99\x9A\x9B\x9C\x9E\x9F", "˜™š›œžŸ"},
        {"\xA0\xB5\xD7\xDF\xE9\xF7\xFF", "\u00A0µ×ßé÷ÿ"},
        {"\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FromCodePage(row.bytes), row.text);
        EXPECT_EQ(ToCodePage(row.text), row.bytes);
        EXPECT_TRUE(FitsCodePage(row.text)) << row.text;
    }
}

TEST(CodePage, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(ToCodePage(FromCodePage(all)), all);
}

TEST(CodePage, RefusesWhatHasNoByte) {
    const struct {
        const char* name;
        std::string text;
    } rows[] = {
        {"Greek", "Ω"},
        {"minus sign", "−1"},
        {"character above three bytes", "\U0001F600"},
        {"control character whose byte is the euro", "\u0080"},
        {"byte of the code page alone",
         "25 \xB0"
         "C"},
        {"cut sequence", "abc\xC3"},
        {"two bytes for one", "\xC1\x81"},
        {"three bytes for two", "\xE0\x82\xB0"},
        {"half of a pair", "\xED\xA0\x80"},
        {"beyond the last character", "\xF4\x90\x80\x80"},
        {"stray continuation", "\x80"},
        {"lead that no form has", "\xFF"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(FitsCodePage(row.text)) << row.name;
        try {
            ToCodePage(row.text);
            ADD_FAILURE() << row.name;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Code(), 5) << row.name;
        }
    }
    EXPECT_TRUE(InCodePage(U'€'));
    EXPECT_TRUE(InCodePage(U'é'));
    EXPECT_FALSE(InCodePage(U'\u0080'));
    EXPECT_FALSE(InCodePage(U'Ω'));
}

}  // namespace
}  // namespace kelvo
