#include "platform/LinkQt.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QSignalSpy>
#include <QtTest>
#include <filesystem>

#include "link/LinkFakes.h"
#include "support/SimulatedInterface.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;
using Kind = LinkLight::Kind;

/// Longest wait for something that must happen; far beyond what any of it takes.
constexpr int LimitMs = 5000;

std::size_t OpenHandles() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

class LinkQtTest : public testing::Test {
 protected:
    LinkQtTest() { linkQt.SetTimeoutMs(60); }
    ~LinkQtTest() override { fs::remove_all(folder); }

    /// One cycle, begun now, to its end.
    void Cycle() {
        link.IntervalTick();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !link.TransferBusy; }, LimitMs));
    }
    /// The links of this test alone: a serial device of the machine must not come in.
    PortNames Names() const { return PortNames((folder / "ports/").string(), "/nonexistent/"); }
    std::string Com(int number) const { return (folder / "ports" / ("COM" + std::to_string(number))).string(); }

    const fs::path folder = fs::temp_directory_path() / ("kelvo-linkqt-" + std::to_string(getpid()));
    AppState state;
    NotedPrompts prompts;
    FixedClock clock;
    LinkQt linkQt{state, prompts, clock, Names(), (folder / "CommPort.ini").string()};
    Link& link = linkQt.GetLink();
};

TEST_F(LinkQtTest, ReadsTheInterfaceThroughARealLine) {
    SimulatedInterface interface(Com(1));
    link.StartLink();
    EXPECT_TRUE(link.Port().PortValid);
    Cycle();
    EXPECT_NEAR(state.Reading[0], 54.6f, 0.5f);
    EXPECT_EQ(state.Reading[1], 745.8f);
    EXPECT_EQ(link.Light().kind, Kind::Live);
}

TEST_F(LinkQtTest, EveryFaultIsSurvivedAndTheNextGoodFrameTaken) {
    SimulatedInterface interface(Com(1));
    link.StartLink();
    Cycle();
    constexpr int Any = -1;
    const struct {
        const char* order;
        int messages, mismatches;
        int lateMs = 0;
    } rows[] = {{"fault silence 1", 0, 0},      {"fault half 1", 0, 0},    {"fault late 0.2 1", 0, 0, 250},
                {"fault last 20 1", 1, 0},      {"fault last FF 1", 0, 1}, {"fault noise 1 1", Any, Any},
                {"fault noise 500 1", Any, Any}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.order);
        int mismatches = 0;
        linkQt.Failed = [&](const RuntimeError& error) {
            EXPECT_EQ(error.Code(), 13);
            ++mismatches;
            link.StartLink();
        };
        prompts.messages.clear();
        interface.Order(row.order);
        Cycle();
        // A late answer is still on its way: it must not be taken for the answer to the next request.
        QTest::qWait(row.lateMs);
        if (row.messages != Any) {
            EXPECT_EQ(static_cast<int>(prompts.messages.size()), row.messages);
            EXPECT_EQ(mismatches, row.mismatches);
        }
        state.Reading[0] = -1;
        const auto good = link.Counts().good;
        Cycle();
        EXPECT_EQ(link.Counts().good, good + 1);
        EXPECT_NEAR(state.Reading[0], 54.6f, 0.5f);
    }
}

TEST_F(LinkQtTest, AnUnpluggedDeviceIsTakenUpAgain) {
    SimulatedInterface interface(Com(1));
    link.StartLink();
    Cycle();
    const float last = state.Reading[0];
    interface.PullOut();
    ASSERT_TRUE(QTest::qWaitFor([this] { return link.Light().kind == Kind::Lost; }, LimitMs));
    Cycle();
    EXPECT_EQ(state.Reading[0], last) << "the last values stand";
    EXPECT_TRUE(link.PortOpen());
    interface.PlugIn();
    Cycle();
    EXPECT_EQ(link.Light().kind, Kind::Live);
    EXPECT_EQ(link.Counts().good, 2u);
}

TEST_F(LinkQtTest, ALinkThatPointsElsewhereIsFollowed) {
    SimulatedInterface first(Com(1)), second(Com(2));
    second.Order("immerse 1e-2");
    link.StartLink();
    Cycle();
    fs::remove(Com(1));
    fs::create_symlink(second.terminal.Device(), Com(1));
    Cycle();
    Cycle();
    EXPECT_EQ(link.Light().kind, Kind::Live);
    EXPECT_LT(state.Reading[0], 40) << "the other beaker";
}

TEST_F(LinkQtTest, APortThatAppearsLaterIsTakenUp) {
    link.StartLink();
    EXPECT_FALSE(link.Port().PortValid);
    EXPECT_EQ(link.Port().Dialog.txtStatus, "COM1 is unavailable. Please select a different port.");
    Cycle();
    SimulatedInterface interface(Com(1));
    Cycle();
    EXPECT_EQ(link.Counts().good, 1u);
}

TEST_F(LinkQtTest, APortThatAnotherProgramHoldsIsListedAndNotOpened) {
    SimulatedInterface interface(Com(2));
    QSerialPort other;
    other.setPortName(QString::fromStdString(interface.terminal.Device()));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    SerialPortQt device(Names());
    ASSERT_EQ(device.SetCommPort(2), PortNoError);
    EXPECT_EQ(device.SetPortOpen(true), PortAlreadyOpen);
    EXPECT_FALSE(device.PortOpen());
    CommPort port(device, prompts, (folder / "none.ini").string());
    port.ScanPorts();
    EXPECT_EQ(port.AvailablePorts, (std::vector<std::string>{"COM2"}));
    other.close();
    ASSERT_EQ(device.SetCommPort(2), PortNoError);
    EXPECT_EQ(device.SetPortOpen(true), PortNoError);
    EXPECT_EQ(device.SetPortOpen(true), PortAlreadyOpen);
    EXPECT_EQ(device.SetCommPort(3), PortStillOpen);
}

TEST_F(LinkQtTest, WhatIsNoSerialDeviceCountsAsAbsent) {
    fs::create_directories(folder / "ports");
    fs::create_symlink("/dev/null", Com(1));
    fs::create_symlink(folder, Com(2));
    fs::create_symlink(folder / "away", Com(3));
    SerialPortQt device(Names());
    for (const int number : {1, 2, 3, 4}) {
        ASSERT_EQ(device.SetCommPort(number), PortNoError);
        EXPECT_EQ(device.SetPortOpen(true), PortAbsent) << number;
        EXPECT_EQ(device.Advice(), "");
    }
    const char* const refused[] = {"9600,E,8,1", "x,N,8,1", "0,N,8,1", "9600"};
    for (const char* settings : refused)
        EXPECT_EQ(device.SetSettings(settings), PortBadProperty) << settings;
}

TEST_F(LinkQtTest, ADeviceWithoutPermissionIsAbsentAndSaysWhatMendsIt) {
    SimulatedInterface interface(Com(1));
    const std::string terminal = interface.terminal.Device();
    ASSERT_EQ(chmod(terminal.c_str(), 0), 0);
    SerialPortQt device(Names());
    CommPort port(device, prompts, (folder / "none.ini").string());
    // The superuser may open anything: look with other eyes.
    const bool super = geteuid() == 0;
    constexpr uid_t Nobody = 65534;
    if (super) {
        ASSERT_EQ(setresuid(Nobody, Nobody, 0), 0);
    }
    port.ScanPorts();
    if (super) {
        ASSERT_EQ(setresuid(0, 0, 0), 0);
    }
    EXPECT_TRUE(port.AvailablePorts.empty());
    EXPECT_EQ(port.Dialog.advice, "No permission to open " + terminal +
                                      ". To mend it, run this once and log in again:\nsudo usermod -aG dialout $USER");
}

TEST_F(LinkQtTest, StoppingInATransferLeavesNothingBehind) {
    SimulatedInterface interface(Com(1));
    interface.Order("fault silence");
    link.StartLink();
    link.StopLink();
    QTest::qWait(0);
    const std::size_t handles = OpenHandles();
    for (int i = 0; i < 100; ++i) {
        link.StartLink();
        link.IntervalTick();
        if (i % 2 == 0) QTest::qWait(1);
        link.StopLink();
        EXPECT_FALSE(link.PortOpen());
    }
    for (const int turns : {0, 3}) {
        LinkQt closing(state, prompts, clock, Names(), (folder / "CommPort.ini").string());
        closing.GetLink().StartLink();
        closing.GetLink().IntervalTick();
        QTest::qWait(turns);
        EXPECT_TRUE(closing.GetLink().TransferBusy) << "the program ends in the middle of a transfer";
    }
    QTest::qWait(0);
    EXPECT_EQ(OpenHandles(), handles);
    EXPECT_EQ(link.Counts().good, 0u);
}

}  // namespace
}  // namespace kelvo::test
