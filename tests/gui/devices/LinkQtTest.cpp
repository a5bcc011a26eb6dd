#include "devices/LinkQt.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QSignalSpy>
#include <QtTest>
#include <filesystem>

#include "app/AppState.h"
#include "link/LinkFakes.h"
#include "support/Patience.h"
#include "support/SimulatedInterface.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;
using Kind = LinkStatus::Kind;

std::ptrdiff_t OpenHandles() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

class LinkQtTest : public testing::Test {
 protected:
    LinkQtTest() { linkQt.SetTimeoutMs(PatienceMs); }
    ~LinkQtTest() override { fs::remove_all(folder); }

    /// One cycle, begun now, to its end.
    void Cycle() {
        link.IntervalTick();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !link.TransferBusy; }, PatienceMs));
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

TEST_F(LinkQtTest, EveryFaultOfARealLineIsSurvivedAndTheNextGoodFrameTaken) {
    SimulatedInterface interface(Com(1));
    link.StartLink();
    linkQt.Failed = [this](const RuntimeError& error) {
        EXPECT_EQ(error.Code(), 13);
        link.StartLink();
    };
    for (const char* order : {"fault silence 1", "fault half 1", "fault late 0.2 1", "fault last 20 1",
                              "fault last FF 1", "fault noise 1 1", "fault noise 500 1"}) {
        SCOPED_TRACE(order);
        const int answers = interface.answers;
        interface.Execute(order);
        linkQt.SetTimeoutMs(60);
        Cycle();
        // The late answer is on the line by now: it must not be taken for the answer to the next request.
        const bool late = std::string_view(order).find("late") != std::string_view::npos;
        ASSERT_TRUE(QTest::qWaitFor([&] { return !late || interface.answers > answers; }, PatienceMs));
        state.Reading.fill(-1);
        const auto good = link.Counts().good;
        linkQt.SetTimeoutMs(PatienceMs);
        Cycle();
        EXPECT_EQ(link.Counts().good, good + 1);
        EXPECT_NEAR(state.Reading[0], 54.6f, 0.5f);
        EXPECT_EQ(state.Reading[1], 745.8f);
    }
}

TEST_F(LinkQtTest, PortsThatComeLateGoAndMoveAreTakenUp) {
    link.StartLink();
    EXPECT_EQ(link.Port().Dialog.txtStatus, "COM1 is unavailable. Please select a different port.");
    Cycle();
    SimulatedInterface interface(Com(1)), second(Com(2));
    Cycle();
    EXPECT_EQ(link.Counts().good, 1u);

    const float last = state.Reading[0];
    interface.PullOut();
    ASSERT_TRUE(QTest::qWaitFor([this] { return link.Status().kind == Kind::Lost; }, PatienceMs));
    Cycle();
    EXPECT_EQ(state.Reading[0], last) << "the last values stand";
    interface.PlugIn();
    Cycle();
    EXPECT_EQ(link.Status().kind, Kind::Live);
    EXPECT_EQ(link.Counts().good, 2u);

    second.Execute("immerse 1e-2");
    fs::remove(Com(1));
    fs::create_symlink(second.terminal.Device(), Com(1));
    Cycle();
    Cycle();
    EXPECT_EQ(link.Status().kind, Kind::Live);
    EXPECT_LT(state.Reading[0], 40) << "the other beaker";
}

TEST_F(LinkQtTest, PortsThatAreHeldForbiddenOrNoneAreToldApart) {
    SimulatedInterface held(Com(1)), forbidden(Com(2));
    QSerialPort other;
    other.setPortName(QString::fromStdString(held.terminal.Device()));
    ASSERT_TRUE(other.open(QIODevice::ReadWrite));
    ASSERT_EQ(chmod(forbidden.terminal.Device().c_str(), 0), 0);
    fs::create_symlink("/dev/null", Com(3));
    fs::create_symlink(folder, Com(4));
    fs::create_symlink(folder / "away", Com(5));
    SerialPortQt device(Names());
    const auto opened = [&device](int number) {
        device.SetPortOpen(false);
        EXPECT_EQ(device.SetCommPort(number), PortNoError);
        return device.SetPortOpen(true);
    };
    EXPECT_EQ(opened(1), PortAlreadyOpen);
    EXPECT_FALSE(device.PortOpen());
    for (const int none : {3, 4, 5, 6})
        EXPECT_EQ(opened(none), PortAbsent) << none;
    // The superuser may open anything: look with other eyes, the real user's too, whom the check for access asks.
    const uid_t real = getuid(), user = geteuid(), eyes = user == 0 ? 65534 : user;
    ASSERT_EQ(setresuid(eyes, eyes, user), 0);
    EXPECT_EQ(opened(2), PortAbsent);
    EXPECT_EQ(device.Advice(), "No permission to open " + forbidden.terminal.Device() +
                                   ". To mend it, run this once and log in again:\nsudo usermod -aG dialout $USER");
    ASSERT_EQ(setresuid(real, user, user), 0);
    other.close();
    EXPECT_EQ(opened(1), PortNoError);
}

TEST_F(LinkQtTest, StoppingInATransferLeavesNothingBehind) {
    SimulatedInterface interface(Com(1));
    interface.Execute("fault silence");
    link.StartLink();
    link.StopLink();
    QTest::qWait(0);
    const auto handles = OpenHandles();
    for (int i = 0; i < 100; ++i) {
        link.StartLink();
        link.IntervalTick();
        if (i % 2 == 0) QTest::qWait(1);
        link.StopLink();
        EXPECT_FALSE(link.PortOpen());
    }
    for (const int turns : {0, 3}) {
        LinkQt closing(state, prompts, clock, Names(), (folder / "CommPort.ini").string());
        closing.SetTimeoutMs(PatienceMs);
        closing.GetLink().StartLink();
        closing.GetLink().IntervalTick();
        QTest::qWait(turns);
        EXPECT_TRUE(closing.GetLink().TransferBusy) << "the program ends in the middle of a transfer";
    }
    QTest::qWait(0);
    EXPECT_EQ(OpenHandles(), handles);
}

}  // namespace
}  // namespace kelvo::test
