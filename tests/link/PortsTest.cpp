#include "link/Ports.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "link/LinkFakes.h"
#include "link/PortNames.h"
#include "text/Files.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PortsTest : public testing::Test {
 protected:
    PortsTest() { fs::create_directories(folder); }
    ~PortsTest() override { fs::remove_all(folder); }
    void Keep(const std::string& rate, const std::string& number) {
        std::ofstream(file) << "[Startup]\r\nBitRate=" << rate << "\r\nPortNumber=" << number << "\r\n";
    }

    const fs::path folder = fs::temp_directory_path() / ("kelvo-ports-" + std::to_string(getpid()));
    const std::string file = (folder / "kept" / "CommPort.ini").string();
    FakePort device;
    NotedPrompts prompts;
    CommPort port{device, prompts, file};
};

TEST_F(PortsTest, KeptSettingsHaveDefaultsAndFloors) {
    const struct {
        const char *rate, *number;
        int wantedRate, wantedNumber;
    } rows[] = {
        {"19200", "3", 19200, 3},   {"200", "0", 9600, 1}, {"300", "16", 300, 16},     {"", "", 9600, 1},
        {"38400", "12", 38400, 12}, {"x", "-4", 9600, 1},  {"9E99", "99999", 9600, 1},
    };
    EXPECT_EQ(PortSettings::Load(file).BitRate, 9600) << "no file";
    fs::create_directories(folder / "kept");
    for (const auto& row : rows) {
        Keep(row.rate, row.number);
        EXPECT_EQ(PortSettings::Load(file).BitRate, row.wantedRate) << row.rate;
        EXPECT_EQ(PortSettings::Load(file).PortNumber, row.wantedNumber) << row.number;
    }
}

TEST_F(PortsTest, SettingsAreKeptInAFolderThatIsMadeForThem) {
    ASSERT_TRUE((PortSettings{57600, 2}.Save(file)));
    EXPECT_EQ(PortSettings::Load(file).BitRate, 57600);
    EXPECT_EQ(PortSettings::Load(file).PortNumber, 2);
}

TEST_F(PortsTest, CharacterTimesByRate) {
    const std::pair<int, float> rows[] = {{300, 33},  {1200, 8},  {2400, 4},   {4800, 2},  {9600, 1},
                                          {19200, 1}, {57600, 0}, {115200, 0}, {20000, 0}, {4000, 2}};
    for (const auto& [rate, ms] : rows)
        EXPECT_EQ(CharTimeMs(rate), ms) << rate;
}

TEST_F(PortsTest, ScanListsWhatOpensAndWhatIsInUse) {
    const struct {
        const char* name;
        std::map<int, int> answer;
        Names wanted;
    } rows[] = {
        {"none at all", {}, {}},
        {"first and last", {{1, 0}, {16, 0}}, {"COM1", "COM16"}},
        {"beyond the last is never seen", {{17, 0}}, {}},
        {"in use elsewhere is listed", {{2, PortAlreadyOpen}}, {"COM2"}},
        {"refused otherwise is not", {{1, PortBadProperty}, {2, 0}}, {"COM2"}},
        {"a clean port right after one in use", {{1, PortAlreadyOpen}, {2, 0}, {3, 0}}, {"COM1", "COM2", "COM3"}},
        {"an absent port after one in use is not", {{1, PortAlreadyOpen}, {2, 0}, {4, 0}}, {"COM1", "COM2", "COM4"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        device.answer = row.answer;
        port.ScanPorts();
        EXPECT_EQ(port.AvailablePorts, row.wanted);
        EXPECT_FALSE(device.open) << "a scan leaves no port open behind it";
    }
}

TEST_F(PortsTest, ScanComesBackToThePortThatWasOpen) {
    device.answer = {{1, 0}, {2, 0}, {3, PortAlreadyOpen}};
    ASSERT_TRUE(port.fncInitializeComPort(9600, 2));
    port.PortNumber = 2;
    port.ScanPorts();
    EXPECT_EQ(port.AvailablePorts, (Names{"COM1", "COM2", "COM3"}));
    EXPECT_TRUE(device.open);
    EXPECT_EQ(device.number, 2);
    EXPECT_EQ(port.PortNumber, 2);
}

TEST_F(PortsTest, OpeningSetsEveryPropertyInOrder) {
    device.answer = {{4, 0}};
    ASSERT_TRUE(port.fncInitializeComPort(19200, 4));
    const auto set = [](PortProperty property, int value) {
        return std::to_string(static_cast<int>(property)) + "=" + std::to_string(value);
    };
    using enum PortProperty;
    EXPECT_EQ(device.calls, (Names{"port 4", "19200,N,8,1", set(InputLen, 0), set(InBufferSize, 24), set(InputMode, 1),
                                   set(Handshaking, 0), set(OutBufferSize, 256), set(EOFEnable, 0), set(RThreshold, 0),
                                   set(SThreshold, 0), "open"}));
    device.calls.clear();
    device.refusals[Handshaking] = PortBadProperty;
    EXPECT_FALSE(port.fncInitializeComPort(19200, 4));
    EXPECT_EQ(device.calls.front(), "close");
    EXPECT_EQ(device.calls.back(), set(InputMode, 1)) << "a failing step ends it there";
}

TEST_F(PortsTest, TimeoutsGoToAnOpenPortAlone) {
    port.SetPortTimeouts(300);
    EXPECT_EQ(device.timeouts, (CommTimeouts{9, 9, 9, 9, 9}));
    device.open = true;
    port.SetPortTimeouts(300);
    EXPECT_EQ(device.timeouts, (CommTimeouts{33, 33, 1000, 33, 1000}));
    port.SetPortTimeouts(115200);
    EXPECT_EQ(device.timeouts, (CommTimeouts{0, 0, 1000, 0, 1000}));
}

TEST_F(PortsTest, LoadingChecksTheKeptPort) {
    const struct {
        const char* name;
        const char* number;
        std::map<int, int> answer;
        bool valid;
        const char* status;
        int portIndex;
    } rows[] = {
        {"there", "2", {{1, 0}, {2, 0}}, true, "", 0},
        {"missing", "2", {{1, 0}}, false, "COM2 is unavailable. Please select a different port.", 0},
        {"no port at all", "1", {}, false, "COM1 is unavailable. Please select a different port.", -1},
        {"held by another program", "1", {{1, PortAlreadyOpen}}, true, "", 0},
    };
    fs::create_directories(folder / "kept");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Keep("9600", row.number);
        device.answer = row.answer;
        port.Unload();
        port.Load();
        EXPECT_EQ(port.PortValid, row.valid);
        EXPECT_EQ(port.Dialog.txtStatus, row.status);
        EXPECT_EQ(port.Dialog.portIndex, row.portIndex);
        EXPECT_EQ(port.Dialog.rateIndex, -1);
        EXPECT_EQ(port.Dialog.window == PortDialog::Window::Normal, !row.valid);
    }
}

TEST_F(PortsTest, TheListsStepToTheirItem) {
    device.answer = {{1, 0}, {12, 0}};
    port.Load();
    port.BitRate = 38400;
    port.SetBitRateComboBox();
    EXPECT_EQ(port.Dialog.rateIndex, 7) << "a rate that is not offered ends on the last";
    port.Dialog.rateIndex = -1;
    port.BitRate = 1200;
    port.SetBitRateComboBox();
    EXPECT_EQ(port.Dialog.rateIndex, 1);
    port.PortNumber = 12;
    port.SetPortComboBox();
    EXPECT_EQ(port.Dialog.portIndex, 0) << "the list comes with its first row selected and stays so";
    port.Dialog.portIndex = -1;
    port.SetPortComboBox();
    EXPECT_EQ(port.Dialog.portIndex, 1) << "all digits of the name count here";
}

TEST_F(PortsTest, OkTakesOneDigitOfTheName) {
    device.answer = {{1, 0}, {2, 0}, {12, 0}};
    port.Load();
    port.SelectRate(4);
    port.SelectPort(2);
    port.cmdOK();
    EXPECT_EQ(port.PortNumber, 2);
    EXPECT_EQ(device.number, 2);
    EXPECT_TRUE(device.open);
    EXPECT_EQ(prompts.messages, (Names{"The test on Comm2 is successful."}));
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Hidden);
    EXPECT_EQ(PortSettings::Load(file).PortNumber, 2);
}

TEST_F(PortsTest, OkKeepsReportingAPortThatWasMissingAtLoad) {
    device.answer = {{2, 0}};
    port.Load();
    port.SelectPort(0);
    port.SelectRate(4);
    port.cmdOK();
    EXPECT_EQ(port.Dialog.txtStatus, "COM2 is unavailable. Please select a different port.");
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Normal);
    EXPECT_TRUE(device.open) << "the chosen port runs all the same";
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(PortsTest, OkWithoutASelectionAsksForAPort) {
    port.Load();
    port.cmdOK();
    EXPECT_EQ(port.Dialog.txtStatus, "Please select a COM port.");
}

TEST_F(PortsTest, NumbersMeanLinksThenDevicesInOrder) {
    const fs::path classes = folder / "tty", links = folder / "ports";
    const auto terminal = [&](const std::string& name, const char* type) {
        fs::create_directories(classes / name / "device");
        if (type != nullptr) std::ofstream(classes / name / "type") << type;
    };
    terminal("ttyS0", "4");
    terminal("ttyS1", "0");
    terminal("ttyUSB10", nullptr);
    terminal("ttyUSB9", nullptr);
    terminal("ttyACM0", nullptr);
    terminal("ttyprintk", nullptr);
    fs::create_directories(classes / "ttyS7");
    fs::create_directories(links);
    fs::create_symlink("/dev/null", links / "COM2");
    fs::create_symlink("/dev/nowhere", links / "COM5");
    const PortNames names(links.string() + "/", classes.string() + "/");
    EXPECT_EQ(names.SerialDevices(), (Names{"/dev/ttyS0", "/dev/ttyUSB9", "/dev/ttyUSB10", "/dev/ttyACM0"}));
    EXPECT_EQ(names.DeviceOf(1), "/dev/ttyS0");
    EXPECT_EQ(names.DeviceOf(2), "/dev/null") << "pinned";
    EXPECT_EQ(names.DeviceOf(3), "/dev/ttyUSB10");
    EXPECT_EQ(names.DeviceOf(5), (links / "COM5").string()) << "pinned and away: no other device in its place";
    EXPECT_EQ(names.DeviceOf(6), "");
    EXPECT_EQ(names.DeviceOf(0), "");
}

}  // namespace
}  // namespace kelvo
