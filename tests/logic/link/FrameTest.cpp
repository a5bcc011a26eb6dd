#include "link/Frame.h"

#include <gtest/gtest.h>
#include <random>

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
    const struct {
        const char* name;
        const char* group;
        float value;
    } rows[] = {
        {"no sign reads as 0", "?1234", 0},
        {"tab as sign is passed over", "\t1234", 123.4f},
        {"digit as sign stands before three places", "50123", 5012.3f},
        {"digits before a wrong byte count", "+12?4", 1.2f},
        {"wrong byte first gives 0", "+?234", 0},
        {"tab before the digits is passed over", "+\t123", 12.3f},
        {"tab within ends the number", "+1\t23", 0.1f},
        {"a sign among the digits makes two signs", "+-123", 0},
        {"minus digits under a tab keep their sign", "\t-123", -12.3f},
        {"end mark within ends the number", "+12\0044", 1.2f},
        {"small e is no exponent", "+1e23", 0.1f},
    };
    for (const auto& row : rows)
        EXPECT_FLOAT_EQ(Decoded("+0000\t" + std::string(row.group) + "\t+0000\t+0000")[1], row.value) << row.name;
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

/// The same groups by another road: whole-number arithmetic on characters, no number texts.
double GroupByHand(const std::uint8_t* group) {
    int sign = 1, lead = 0, at = 1, digitSign = 1, tenths = 0;
    switch (group[0]) {
        case '+': break;
        case '-': sign = -1; break;
        case '\t': break;
        default:
            if (group[0] < '0' || group[0] > '9') return 0;
            lead = group[0] - '0';
    }
    while (at < 5 && group[at] == '\t')
        ++at;
    const bool signedDigits = at < 5 && (group[at] == '+' || group[at] == '-');
    if (signedDigits && group[at++] == '-') digitSign = -1;
    for (; at < 5 && group[at] >= '0' && group[at] <= '9'; ++at)
        tenths = tenths * 10 + (group[at] - '0');
    if (digitSign < 0 && tenths > 0) {
        // Two signs are no number; a digit before a minus is a number of its own; a tab is nothing.
        if (group[0] == '\t') return -tenths / 10.0;
        return lead;
    }
    const bool leads = group[0] >= '0' && group[0] <= '9';
    return sign * ((leads ? lead * 1000.0 : 0) + tenths / 10.0);
}

TEST(Frame, AgreesWithAnIndependentReadingOnRandomBytes) {
    std::mt19937 random(20261124);
    const std::string likely = "+-0123456789\t\004?E.eD \r";
    for (int round = 0; round < 200000; ++round) {
        std::array<std::uint8_t, FrameBytes> frame{};
        for (auto& byte : frame)
            byte = round % 4 == 0 ? static_cast<std::uint8_t>(random())
                                  : static_cast<std::uint8_t>(likely[random() % likely.size()]);
        std::array<float, 5> reading{};
        DecodeFrame(frame, reading);
        for (std::size_t channel = 0; channel < 4; ++channel)
            ASSERT_FLOAT_EQ(reading[channel], static_cast<float>(GroupByHand(&frame[channel * 6])))
                << std::string(frame.begin(), frame.end()) << " channel " << channel;
    }
}

}  // namespace
}  // namespace kelvo::test
