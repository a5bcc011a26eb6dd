#include "link/Frame.h"

#include <gtest/gtest.h>

#include "link/LinkFakes.h"

namespace kelvo::test {
namespace {

std::array<float, 5> Decoded(const std::string& text) {
    std::array<float, 5> reading = {7, 7, 7, 7, 7};
    const auto bytes = Bytes(text);
    DecodeFrame(std::span<const std::uint8_t>(bytes).first<FrameBytes>(), reading);
    return reading;
}

TEST(Frame, DecodesEveryOddGroup) {
    const std::tuple<const char*, const char*, float> rows[] = {
        {"no sign reads as 0", "?1234", 0},
        {"tab as sign is passed over", "\t1234", 123.4f},
        {"digit as sign stands before three places", "50123", 5012.3f},
        {"digits before a wrong byte count", "+12?4", 1.2f},
        {"wrong byte first gives 0", "+?234", 0},
        {"end mark within ends the number", "+12\0044", 1.2f},
        {"a digit before a minus is a number of its own", "5-123", 5},
        {"a digit before a plus is not", "5+123", 5012.3f},
        {"no decimal point", "+1.23", 0.1f},
        {"digit as sign, tab before the digits", "5\t123", 5012.3f},
        {"digit as sign, no digits", "5????", 5000},
        {"minus under minus", "--123", 0},
        {"plus digits under a minus keep the minus", "-+123", -12.3f},
        {"tab before the digits is passed over", "+\t123", 12.3f},
        {"tab within ends the number", "+1\t23", 0.1f},
        {"a sign among the digits makes two signs", "+-123", 0},
        {"minus digits under a tab keep their sign", "\t-123", -12.3f},
        {"small e is no exponent", "+1e23", 0.1f},
    };
    for (const auto& [name, group, value] : rows)
        EXPECT_FLOAT_EQ(Decoded("+0000\t" + std::string(group) + "\t+0000\t+0000")[1], value) << name;
}

TEST(Frame, EveryValueOfTheRangeComesBack) {
    for (int tenths = -9999; tenths <= 9999; ++tenths) {
        char group[16];
        std::snprintf(group, sizeof group, "%+05d", tenths);
        ASSERT_EQ(Decoded(std::string(group) + "\t+0000\t+0000\t+0000")[0], static_cast<float>(tenths / 10.0)) << group;
    }
}

TEST(Frame, LastByteIsReadAsItsHexadecimalText) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool letter = byte % 16 > 9 || byte / 16 > 9;
        try {
            EXPECT_EQ(EndsFrame(static_cast<std::uint8_t>(byte)), byte == 4) << byte;
            EXPECT_FALSE(letter) << byte;
        } catch (const RuntimeError& error) {
            EXPECT_TRUE(letter && error.Code() == 13) << byte;
        }
    }
}

}  // namespace
}  // namespace kelvo::test
