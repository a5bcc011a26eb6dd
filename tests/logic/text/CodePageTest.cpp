#include "text/CodePage.h"

#include <gtest/gtest.h>

#include "text/CodeOf.h"
#include "text/UserText.h"

namespace kelvo::test {
namespace {

TEST(CodePage, CrossesBothWays) {
    // Bytes from the table of the code page's maker.
    const char* const rows[][2] = {
        {"pH 7\t\r\n25 \xB0 C", "pH 7\t\r\n25 ° C"},
        {"\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E", "€‚ƒ„…†‡ˆ‰Š‹ŒŽ"},
        {"\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F", "‘’“”•–—˜™š›œžŸ"},
        {"\xA0\xB5\xD7\xDF\xE9\xF7\xFF", "\u00A0µ×ßé÷ÿ"},
        {"\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D"},
    };
    for (const auto& [bytes, text] : rows) {
        EXPECT_EQ(FromCodePage(bytes), text);
        EXPECT_EQ(ToCodePage(text), bytes);
        EXPECT_TRUE(FitsCodePage(text)) << text;
    }
}

TEST(CodePage, RefusesWhatHasNoByte) {
    // Characters of no byte, then a byte of the code page alone, a cut sequence, two forms longer than need be, a lead
    // that no form has.
    for (const char* text :
         {"Ω", "−1", "\U0001F600", "\u0080", "25 \xB0 C", "abc\xC3", "\xC1\x81", "\xE0\x82\xB0", "\xFF"}) {
        EXPECT_FALSE(FitsCodePage(text)) << text;
        EXPECT_EQ(CodeOf([text] { ToCodePage(text); }), 5) << text;
    }
}

/// What a file of the user holds, and its text: UTF-8 where the bytes are that, the code page where they are not.
TEST(CodePage, TextsOfTheUserAreUtf8AndOlderOnesAreRead) {
    const char* const rows[][2] = {
        {"\xEF\xBB\xBFΩ → 25 °C \U0001F600", "Ω → 25 °C \U0001F600"},
        {"25 \xB0 C", "25 ° C"},
        {"\xC3\xA4", "ä"},
        {"ä\xE4", "Ã¤ä"},                             // one byte of the code page makes all of it that
        {"\xED\xA0\x80", "í\u00A0€"},                 // a surrogate
        {"\xC1\x81\xE0\x82\xB0", "Á\u0081à‚°"},       // longer than need be
        {"\xF4\x90\x80\x80\xE2\x82", "ô\u0090€€â‚"},  // beyond the last character, and one that is cut
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(FromUserText(bytes), text);
}

}  // namespace
}  // namespace kelvo::test
