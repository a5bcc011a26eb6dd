#include "link/Link.h"

#include <algorithm>

#include "link/LinkFakes.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using Kind = LinkStatus::Kind;
constexpr auto Completed = "Data transfer completed: 24/11/2026, 09:05:07";

class LinkTest : public LinkBench {
 protected:
    /// What the light says when that many seconds will have passed, without its first word.
    std::string StatusAfter(double seconds) {
        clock.steady += seconds;
        const std::string text = LinkStatusText(link.Status());
        clock.steady -= seconds;
        return text.substr(std::string("Interface: ").size()) + " ";
    }
    auto Sent() const { return std::count(device.calls.begin(), device.calls.end(), "send 2,0"); }

    const std::vector<std::uint8_t> good = Bytes("+1234\t-0567\t+0025\t+7458");
    const std::vector<std::uint8_t> bad = Bytes("+1234\t-0567\t+0025\t+7458", 0x20);
    const std::array<float, 5> values = {123.4f, -56.7f, 2.5f, 745.8f, 0};
};

TEST_F(LinkTest, PollsAndKeepsTheLatestFrame) {
    state.Reading = {1, 2, 3, 4, 5};
    link.StartLink();
    EXPECT_EQ(state.Reading, (std::array<float, 5>{})) << "a start begins with no data";
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Hidden);
    EXPECT_EQ(StatusAfter(0) + StatusAfter(3.5) + StatusAfter(12.9), "waiting waiting waiting for 12 s ");
    device.calls.clear();
    Poll();
    EXPECT_EQ(Joined(device.calls), "send 2,0,discard,0=24")
        << "what waits is thrown away before the wait, after the request";
    Arrive({good.begin(), good.begin() + 10});
    EXPECT_TRUE(link.TransferBusy);
    EXPECT_EQ(state.Reading[0], 0);
    Arrive({good.begin() + 10, good.end()});
    EXPECT_EQ(state.Reading, values);
    EXPECT_EQ(Joined(link.TransferBusy, host.timeout, port.Dialog.txtStatus), Joined("0|0", Completed));
    std::string ages;
    for (const double age : {1.59375, 1.625, 3.59375, 3.625, 12.9})
        ages += StatusAfter(age);
    EXPECT_EQ(ages, "live late late silent for 3 s silent for 12 s ");
}

TEST_F(LinkTest, AWaitSwallowsTicksAndEndsInSilence) {
    link.StartLink();
    Poll();
    Arrive(good);
    for (const int bytes : {0, 10, 23}) {
        SCOPED_TRACE(bytes);
        const auto sent = Sent();
        Poll();
        Arrive({good.begin(), good.begin() + bytes});
        Poll();
        Poll();
        EXPECT_EQ(Sent(), sent + 1) << "ticks within the wait are swallowed";
        ASSERT_TRUE(host.timeout);
        link.TimeoutTick();
        EXPECT_EQ(Joined(link.TransferBusy, state.Reading, port.Dialog.txtStatus), Joined(0, values, Completed))
            << "the last values stand";
    }
    EXPECT_TRUE(prompts.messages.empty()) << "a dead interface is silent";
}

TEST_F(LinkTest, AFrameTellsItsRhythm) {
    link.StartLink();
    EXPECT_EQ(link.LatestFrame().number, 0u);
    const auto mark = [this] {
        const FrameMark frame = link.LatestFrame();
        return Joined(frame.number, frame.inTime);
    };
    const std::pair<double, const char*> rows[] = {
        {4, "1|1"}, {1, "2|2"}, {1.59375, "3|3"}, {1.625, "4|0"}, {1, "5|1"}};
    for (const auto& [gap, wanted] : rows) {
        Poll();
        clock.steady += gap - 1;
        Arrive(good);
        EXPECT_EQ(mark(), wanted) << gap;
    }
    clock.steady += 1.5;
    EXPECT_EQ(mark() + Joined(link.LatestFrame().age), "5|11.5");
    clock.steady += 0.125;
    EXPECT_EQ(mark(), "5|0") << "the next one is late";
    Poll();
    Arrive(good);
    Poll();
    Arrive(good);
    EXPECT_EQ(mark(), "7|1");
    device.open = false;
    EXPECT_EQ(mark(), "7|0");
    link.PortLost();
    Poll();
    Arrive(good);
    EXPECT_EQ(mark(), "8|1") << "a port that came back at once begins anew";
    link.StartLink();
    EXPECT_EQ(mark(), "0|0");
}

TEST_F(LinkTest, AWrongLastByteIsReportedOncePerFrame) {
    link.StartLink();
    Poll();
    prompts.during = [&] { Poll(), Arrive(good); };
    Arrive(bad);
    EXPECT_EQ(Joined(prompts.messages, Sent(), state.Reading[0]),
              "Kelvo: Data transmission uncompleted: 24/11/2026, 09:05:07|1|0")
        << "no cycle starts while the box stands";
    Poll();
    EXPECT_THROW(Arrive(Bytes("+1234\t-0567\t+0025\t+7458", 0x0D)), RuntimeError);
}

TEST_F(LinkTest, StoppingAtAnyMomentIsSafe) {
    link.StopLink();
    link.StartLink();
    Poll();
    link.StopLink();
    EXPECT_EQ(link.Status().kind, Kind::Off);
    EXPECT_FALSE(host.interval || host.timeout || device.open || link.TransferBusy || link.PortOpen());
    link.TimeoutTick();
    Arrive(good);
    EXPECT_EQ(link.Counts().good, 0u) << "what comes after a stop is nobody's";
    // Stopped and started again while a box stands: its answer must not end the newer transfer.
    link.StartLink();
    Poll();
    prompts.during = [&] { link.StopLink(), link.StartLink(), Poll(); };
    Arrive(bad);
    EXPECT_TRUE(link.TransferBusy);
    Arrive(good);
    EXPECT_EQ(state.Reading, values);
    link.StopLink();
    state.InterfaceKind = 3;
    link.StartLink();
    EXPECT_FALSE(host.interval || link.PortOpen()) << "only the serial interface is polled";
}

TEST_F(LinkTest, AStopKeepsThePortSettings) {
    const ScratchFolder folder;
    CommPort kept(device, prompts, folder / "CommPort.ini");
    Link stopped(state, kept, device, prompts, clock, host);
    stopped.StopLink();
    EXPECT_TRUE(folder.Names().empty()) << "nothing was read, so nothing is kept";
    stopped.StartLink();
    kept.BitRate = 57600;
    stopped.StopLink();
    EXPECT_EQ(PortSettings::Load(folder / "CommPort.ini").BitRate, 57600);
}

TEST_F(LinkTest, APortThatIsAwayIsTriedAtEachTick) {
    device.answer.clear();
    link.StartLink();
    EXPECT_EQ(Joined(port.Dialog.window == PortDialog::Window::Normal, port.Dialog.txtStatus),
              "1|COM1 is unavailable. Please select a different port.");
    Poll();
    EXPECT_EQ(link.Status().kind, Kind::Lost);
    device.answer = {{1, PortNoError}};
    Poll();
    Arrive(good);
    Poll();
    device.open = false;
    link.PortLost();
    EXPECT_FALSE(link.TransferBusy) << "the wait ends with its port";
    EXPECT_TRUE(link.Status().kind == Kind::Lost && link.PortOpen()) << "there is still a link to stop";
    EXPECT_EQ(state.Reading, values);
    Poll();
    Arrive(good);
    EXPECT_EQ(link.Status().kind, Kind::Live);
}

}  // namespace
}  // namespace kelvo::test
