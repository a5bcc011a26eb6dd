#include "link/Frame.h"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>

#include "link/LinkFakes.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

std::array<float, 5> Decoded(const std::string& text) {
    std::array<float, 5> reading = {7, 7, 7, 7, 7};
    const auto bytes = Bytes(text);
    DecodeFrame(std::span<const std::uint8_t>(bytes).first<FrameBytes>(), reading);
    return reading;
}

TEST(Frame, DecodesTheFourChannelsInOrder) {
    EXPECT_EQ(Decoded("+1234\t-0567\t+0025\t+7458"), (std::array<float, 5>{123.4f, -56.7f, 2.5f, 745.8f, 7}));
}

TEST(Frame, DecodesEveryOddGroup) {
    const struct {
        const char* name;
        const char* group;
        float value;
    } rows[] = {
        {"largest", "+9999", 999.9f},
        {"least", "-9999", -999.9f},
        {"one tenth", "-0001", -0.1f},
        {"zero has no sign", "-0000", 0},
        {"no sign reads as 0", "?1234", 0},
        {"end mark as sign reads as 0", "\0041234", 0},
        {"tab as sign is passed over", "\t1234", 123.4f},
        {"digit as sign stands before three places", "51234", 5123.4f},
        {"digits before a wrong byte count", "+12?4", 1.2f},
        {"wrong byte first gives 0", "+?234", 0},
        {"wrong byte last", "-123?", -12.3f},
        {"tab before the digits is passed over", "+\t123", 12.3f},
        {"tab within ends the number", "+1\t23", 0.1f},
        {"a sign among the digits makes two signs", "+-123", 0},
        {"minus digits under a tab keep their sign", "\t-123", -12.3f},
        {"plus digits", "-+123", -12.3f},
        {"sign within ends the number", "+1-23", 0.1f},
        {"end mark within ends the number", "+12\0044", 1.2f},
        {"small e is no exponent", "+1e23", 0.1f},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_FLOAT_EQ(Decoded("+0000\t" + std::string(row.group) + "\t+0000\t+0000")[1], row.value);
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

TEST(Frame, EveryValueOfTheRangeComesBack) {
    for (int tenths = -9999; tenths <= 9999; ++tenths) {
        char group[16];
        std::snprintf(group, sizeof group, "%+05d", tenths);
        ASSERT_EQ(Decoded(std::string(group) + "\t+0000\t+0000\t+0000")[0], static_cast<float>(tenths / 10.0)) << group;
    }
}

TEST(Frame, LastByteIsReadAsItsHexadecimalText) {
    for (int byte = 0; byte < 256; ++byte) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%X", byte);
        std::optional<bool> ends;
        try {
            ends = EndsFrame(static_cast<std::uint8_t>(byte));
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Code(), 13);
        }
        const bool letter = std::string(hex).find_first_of("ABCDEF") != std::string::npos;
        EXPECT_EQ(ends.has_value(), !letter) << hex;
        EXPECT_EQ(ends.value_or(false), byte == 4) << hex;
    }
}

TEST(Frame, RequestForms) {
    using Request = std::vector<std::uint8_t>;
    Request output;
    EXPECT_TRUE(ComposeRequest("2", output));
    EXPECT_EQ(output, (Request{0x02, 0x00}));
    EXPECT_TRUE(ComposeRequest("24", output));
    EXPECT_EQ(output, (Request{0x18, 0x00}));
    EXPECT_TRUE(ComposeRequest("1732552", output, 73, 255));
    EXPECT_EQ(output, (Request{0x01, 73, 255, 0x02}));
    EXPECT_FALSE(ComposeRequest("1732552", output, 7, 3)) << "other parameters than the text says";
    EXPECT_FALSE(ComposeRequest("", output));
    EXPECT_EQ(output, (Request{0x01, 73, 255, 0x02})) << "the request before goes out again";
}

}  // namespace
}  // namespace kelvo
