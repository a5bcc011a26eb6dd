#include "link/Link.h"

#include <gtest/gtest.h>

#include "link/LinkFakes.h"

namespace kelvo {
namespace {

using Kind = LinkLight::Kind;

class LinkTest : public testing::Test {
 protected:
    LinkTest() { device.answer = {{1, PortNoError}}; }

    void Arrive(const std::vector<std::uint8_t>& bytes) {
        device.received.insert(device.received.end(), bytes.begin(), bytes.end());
        link.BytesArrived();
    }
    /// A whole second passes: the tick of the polling.
    void Second() {
        host.seconds += 1;
        if (host.interval) link.IntervalTick();
    }
    void TimeOut() {
        ASSERT_TRUE(host.timeout);
        host.timeout = false;
        link.TimeoutTick();
    }

    const std::vector<std::uint8_t> good = Bytes("+1234\t-0567\t+0025\t+7458");
    const std::array<float, 5> values = {123.4f, -56.7f, 2.5f, 745.8f, 0};
    AppState state;
    FakePort device;
    NotedPrompts prompts;
    FixedClock clock;
    ScriptedHost host;
    CommPort port{device, prompts, "/dev/null/kelvo/CommPort.ini"};
    Link link{state, port, device, prompts, clock, host};
};

TEST_F(LinkTest, PollsAndKeepsTheLatestFrame) {
    state.Reading = {1, 2, 3, 4, 5};
    link.StartLink();
    EXPECT_EQ(state.Reading, (std::array<float, 5>{})) << "a start begins with no data";
    EXPECT_TRUE(port.PortOpened);
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Hidden);
    device.calls.clear();
    Second();
    EXPECT_EQ(device.sent.back(), (std::vector<std::uint8_t>{0x02, 0x00}));
    EXPECT_EQ(device.calls[0], "send");
    EXPECT_EQ(device.calls[1], "discard") << "what waits is thrown away before the wait, after the request";
    Arrive({good.begin(), good.begin() + 10});
    EXPECT_TRUE(link.TransferBusy);
    EXPECT_EQ(state.Reading[0], 0) << "an unfinished frame changes nothing";
    Arrive({good.begin() + 10, good.end()});
    EXPECT_EQ(state.Reading, values);
    EXPECT_FALSE(link.TransferBusy);
    EXPECT_FALSE(host.timeout);
    EXPECT_EQ(port.Dialog.txtStatus, "Data transfer completed: 24/11/2026, 20:49:05");
}

TEST_F(LinkTest, AWaitSwallowsTicksAndEndsInSilence) {
    link.StartLink();
    Second();
    Arrive(good);
    for (const std::size_t bytes : {std::size_t{0}, std::size_t{10}, std::size_t{23}}) {
        SCOPED_TRACE(bytes);
        const std::size_t sent = device.sent.size();
        Second();
        Arrive({good.begin(), good.begin() + static_cast<std::ptrdiff_t>(bytes)});
        Second();
        Second();
        EXPECT_EQ(device.sent.size(), sent + 1) << "ticks within the wait are swallowed";
        TimeOut();
        EXPECT_FALSE(link.TransferBusy);
        EXPECT_EQ(state.Reading, values) << "the last values stand";
        EXPECT_EQ(port.Dialog.txtStatus, "Data transfer completed: 24/11/2026, 20:49:05");
    }
    EXPECT_TRUE(prompts.messages.empty()) << "a dead interface is silent";
    Second();
    EXPECT_TRUE(device.received.empty()) << "the leavings are discarded by the next cycle";
    Arrive(good);
    EXPECT_EQ(link.Counts().good, 2u);
}

TEST_F(LinkTest, AWrongLastByteIsReportedOncePerFrame) {
    link.StartLink();
    Second();
    auto bad = good;
    bad.back() = 0x20;
    prompts.during = [&] {
        EXPECT_TRUE(link.TransferBusy);
        Second();
        Arrive(good);
    };
    Arrive(bad);
    EXPECT_EQ(prompts.messages,
              (std::vector<std::string>{"Kelvo: Data transmission uncompleted: 24/11/2026, 20:49:05"}));
    EXPECT_EQ(device.sent.size(), 1u) << "no cycle starts while the box stands";
    EXPECT_EQ(state.Reading[0], 0);
    EXPECT_FALSE(link.TransferBusy);
    Second();
    Arrive(good);
    EXPECT_EQ(state.Reading, values);
}

TEST_F(LinkTest, ALetterInTheLastByteIsATypeMismatch) {
    link.StartLink();
    Second();
    auto bad = good;
    bad.back() = 0x0D;
    try {
        Arrive(bad);
        FAIL() << "nothing was thrown";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Code(), 13);
    }
    link.StopLink();
    EXPECT_FALSE(device.open);
}

TEST_F(LinkTest, StoppingAtAnyMomentIsSafe) {
    link.StopLink();
    EXPECT_FALSE(link.PortOpen());
    link.StartLink();
    Second();
    link.StopLink();
    EXPECT_FALSE(host.interval || host.timeout || device.open || link.TransferBusy || link.PortOpen());
    link.TimeoutTick();
    Arrive(good);
    EXPECT_EQ(link.Counts().good, 0u) << "what comes after a stop is nobody's";
    // Stopped and started again while a box stands: its answer must not end the newer transfer.
    link.StartLink();
    Second();
    auto bad = good;
    bad.back() = 0x20;
    prompts.during = [&] {
        link.StopLink();
        link.StartLink();
        Second();
    };
    Arrive(bad);
    EXPECT_TRUE(link.TransferBusy);
    Arrive(good);
    EXPECT_EQ(state.Reading, values);
}

TEST_F(LinkTest, ALostPortIsTakenUpAgainWithoutAClick) {
    link.StartLink();
    Second();
    Arrive(good);
    Second();
    device.open = false;
    link.PortLost();
    EXPECT_FALSE(link.TransferBusy) << "the wait ends with its port";
    EXPECT_EQ(link.Light().kind, Kind::Lost);
    EXPECT_TRUE(link.PortOpen()) << "there is still a link to stop";
    device.answer = {{1, PortAbsent}};
    Second();
    Second();
    EXPECT_EQ(device.sent.size(), 2u);
    EXPECT_EQ(state.Reading, values);
    device.answer = {{1, PortNoError}};
    Second();
    EXPECT_EQ(device.sent.size(), 3u);
    Arrive(good);
    EXPECT_EQ(link.Light().kind, Kind::Live);
}

TEST_F(LinkTest, NoPortAtTheStartShowsTheDialogAndStillTries) {
    device.answer.clear();
    link.StartLink();
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Normal);
    EXPECT_EQ(port.Dialog.txtStatus, "COM1 is unavailable. Please select a different port.");
    Second();
    EXPECT_EQ(link.Light().kind, Kind::Lost);
    device.answer = {{1, PortNoError}};
    Second();
    Arrive(good);
    EXPECT_EQ(state.Reading, values);
}

TEST_F(LinkTest, OnlyTheSerialInterfaceIsPolled) {
    state.InterfaceKind = 3;
    link.StartLink();
    EXPECT_FALSE(host.interval || link.PortOpen());
}

TEST_F(LinkTest, UnaskedFramesCountOnlyWhenTheEventIsOn) {
    link.StartLink();
    Arrive(good);
    EXPECT_EQ(state.Reading[0], 0);
    device.received.clear();
    device.Set(PortProperty::RThreshold, 24);
    Arrive(good);
    EXPECT_EQ(state.Reading, values);
    EXPECT_EQ(device.Get(PortProperty::RThreshold), 24);
}

TEST_F(LinkTest, TheLightTellsHowOldTheReadingIs) {
    EXPECT_EQ(link.Light().kind, Kind::Off);
    link.StartLink();
    Second();
    Arrive(good);
    const struct {
        double age;
        const char* text;
    } rows[] = {{0, "Interface: live"},
                {1.5, "Interface: live"},
                {2, "Interface: late"},
                {3.5, "Interface: late"},
                {12.9, "Interface: silent for 12 s"}};
    const double taken = host.seconds;
    for (const auto& row : rows) {
        host.seconds = taken + row.age;
        EXPECT_EQ(LinkLightText(link.Light()), row.text);
    }
}

}  // namespace
}  // namespace kelvo
