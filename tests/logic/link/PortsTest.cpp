#include "link/Ports.h"

#include "link/LinkFakes.h"
#include "link/PortNames.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;

class PortsTest : public testing::Test {
 protected:
    std::string Kept() const {
        const PortSettings settings = PortSettings::Load(file);
        return Joined(settings.BitRate, settings.PortNumber);
    }

    const ScratchFolder folder;
    const std::string file = folder / "kept/CommPort.ini";
    FakePort device;
    NotedPrompts prompts;
    CommPort port{device, prompts, file};
};

TEST_F(PortsTest, KeptSettingsHaveDefaultsAndFloors) {
    const std::array<const char*, 3> rows[] = {
        {"200", "0", "9600|1"}, {"300", "16", "300|16"}, {"9E99", "99999", "9600|1"}, {"x", "-4", "9600|1"}};
    EXPECT_EQ(Kept(), "9600|1") << "no file";
    EXPECT_TRUE((PortSettings{57600, 2}.Save(file))) << "in a folder that is made for it";
    EXPECT_EQ(Kept(), "57600|2");
    for (const auto& [rate, number, wanted] : rows) {
        folder.Put("kept/CommPort.ini",
                   std::string("[Startup]\r\nBitRate=") + rate + "\r\nPortNumber=" + number + "\r\n");
        EXPECT_EQ(Kept(), wanted);
    }
}

TEST_F(PortsTest, ScanListsWhatOpensAndWhatIsInUse) {
    const std::pair<std::map<int, int>, const char*> rows[] = {
        {{}, ""},
        {{{1, 0}, {16, 0}, {17, 0}}, "COM1,COM16"},
        {{{1, PortBadProperty}, {2, 0}}, "COM2"},
        {{{1, PortAlreadyOpen}, {2, 0}, {4, 0}}, "COM1,COM2,COM4"},
    };
    for (const auto& [answer, wanted] : rows) {
        device.answer = answer;
        port.ScanPorts();
        EXPECT_EQ(Joined(port.AvailablePorts), wanted);
        EXPECT_FALSE(device.open) << wanted << ": a scan leaves no port open behind it";
    }
    device.answer = {{1, 0}, {2, 0}, {3, PortAlreadyOpen}};
    ASSERT_TRUE(port.fncInitializeComPort(9600, 2));
    port.PortNumber = 2;
    port.ScanPorts();
    EXPECT_EQ(Joined(port.AvailablePorts, device.open, device.number, port.PortNumber), "COM1,COM2,COM3|1|2|2")
        << "a scan comes back to the port that was open";
}

TEST_F(PortsTest, OpeningSetsEveryPropertyInOrderAndThenTimeouts) {
    port.SetPortTimeouts(300);
    EXPECT_EQ(device.timeouts, (CommTimeouts{9, 9, 9, 9, 9})) << "not while closed";
    device.answer = {{4, 0}};
    ASSERT_TRUE(port.fncInitializeComPort(19200, 4));
    // A property is noted by its place in PortProperty.
    EXPECT_EQ(Joined(device.calls), "port 4,19200,N,8,1,0=0,1=24,3=1,4=0,2=256,5=0,6=0,7=0,open");
    const std::pair<int, std::uint32_t> rows[] = {{300, 33}, {4000, 2}, {9600, 1}, {20000, 0}, {115200, 0}};
    for (const auto& [rate, ms] : rows) {
        port.SetPortTimeouts(rate);
        EXPECT_EQ(device.timeouts, (CommTimeouts{ms, ms, 1000, ms, 1000})) << rate;
    }
}

TEST_F(PortsTest, LoadingChecksTheKeptPort) {
    const std::pair<std::map<int, int>, const char*> rows[] = {
        {{{1, 0}, {2, 0}}, "1||0|0"},
        {{{2, PortAlreadyOpen}}, "1||0|0"},
        {{{1, 0}}, "0|COM2 is unavailable. Please select a different port.|0|1"},
        {{}, "0|COM2 is unavailable. Please select a different port.|-1|1"},
    };
    PortSettings{9600, 2}.Save(file);
    for (const auto& [answer, seen] : rows) {
        device.answer = answer;
        port.Unload();
        port.Load();
        const PortDialog& dialog = port.Dialog;
        EXPECT_EQ(
            Joined(port.PortValid, dialog.txtStatus, dialog.portIndex, dialog.window == PortDialog::Window::Normal),
            seen);
    }
}

TEST_F(PortsTest, ListsStepToTheirItemAndOkTakesOneDigitOfTheName) {
    device.answer = {{1, 0}, {2, 0}, {12, 0}};
    port.Load();
    port.Dialog.portIndex = -1;
    port.BitRate = 38400;
    port.PortNumber = 12;
    port.SetBitRateComboBox();
    port.SetPortComboBox();
    EXPECT_EQ(Joined(port.Dialog.rateIndex, port.Dialog.portIndex), "7|2") << "a rate not offered ends on the last";
    port.SelectRate(4);
    port.cmdOK();
    EXPECT_EQ(Joined(port.PortNumber, device.number, device.open, prompts.messages, Kept()),
              "2|2|1|The test on Comm2 is successful.|9600|2");
    EXPECT_EQ(port.Dialog.window, PortDialog::Window::Hidden);
}

TEST_F(PortsTest, OkWithoutAChoiceLeavesThePortInForce) {
    const std::tuple<std::map<int, int>, int, const char*> rows[] = {
        {{}, -1, "3|57600|COM3 is unavailable. Please select a different port."},  // nothing to choose from
        {{{1, 0}}, -1, "3|57600|Please select a COM port."},   // the refusal has taken the choice away
        {{{10, 0}}, 0, "0|57600|Please select a COM port."}};  // one digit of COM10 is no port
    PortSettings{57600, 3}.Save(file);
    for (const auto& [answer, choice, seen] : rows) {
        device.answer = answer;
        port.Unload();
        port.Load();
        port.SetBitRateComboBox();
        port.Dialog.portIndex = choice;
        port.cmdOK();
        EXPECT_EQ(Joined(port.PortValid, port.PortNumber, port.BitRate, port.Dialog.txtStatus),
                  std::string("0|") + seen);
    }
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(PortsTest, ATestWhoseSettingsAreNotKeptSaysSo) {
    CommPort unkept(device, prompts, "/dev/null/kelvo/CommPort.ini");
    device.answer = {{1, 0}};
    unkept.Load();
    unkept.SetBitRateComboBox();
    unkept.cmdOK();
    EXPECT_EQ(Joined(prompts.messages),
              "The test on Comm1 is successful.,The port settings could not be written to "
              "/dev/null/kelvo/CommPort.ini: they are lost when the link stops. Choose the port again then.");
}

TEST_F(PortsTest, NumbersMeanLinksThenDevicesInOrder) {
    const fs::path classes = folder / "tty", links = folder / "ports";
    const std::pair<const char*, const char*> terminals[] = {{"ttyS0", "4"},  {"ttyS1", "0"},  {"ttyUSB10", ""},
                                                             {"ttyUSB9", ""}, {"ttyACM0", ""}, {"ttyprintk", ""}};
    for (const auto& [name, type] : terminals) {
        fs::create_directories(classes / name / "device");
        folder.Put(std::string("tty/") + name + "/type", type);
    }
    fs::create_directories(classes / "ttyS7");
    fs::create_directories(links);
    fs::create_symlink("/dev/null", links / "COM2");
    fs::create_symlink("/dev/nowhere", links / "COM5");
    const PortNames names(links.string() + "/", classes.string() + "/");
    EXPECT_EQ(Joined(names.SerialDevices()), "/dev/ttyS0,/dev/ttyUSB9,/dev/ttyUSB10,/dev/ttyACM0");
    EXPECT_EQ(Joined(names.DeviceOf(0), names.DeviceOf(1), names.DeviceOf(2), names.DeviceOf(3), names.DeviceOf(6)),
              "|/dev/ttyS0|/dev/null|/dev/ttyUSB10|");
    EXPECT_EQ(names.DeviceOf(5), (links / "COM5").string()) << "pinned and away: no other device in its place";
}

}  // namespace
}  // namespace kelvo::test
