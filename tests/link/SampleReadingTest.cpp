#include "link/SampleReading.h"

#include <gtest/gtest.h>

#include "link/LinkFakes.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Press = SampleReading::Press;
using Texts = std::vector<std::string>;

/// A method that notes what the dialog does to it.
class NotedHost : public ReadingHost {
 public:
    bool many = true, takes = true;
    Texts calls;
    std::string celsius, fahrenheit;
    int colour = -1;
    bool TakesManySamples() const override { return many; }
    void ShowTemperature(const std::string& c, const std::string& f) override { celsius = c, fahrenheit = f; }
    void ColourTemperature(int c) override { colour = c; }
    void ShowSecondElectrode(float mv, bool corrected) override {
        calls.push_back("second " + Format(mv, "#0.0") + (corrected ? " corrected" : ""));
    }
    void ShowNoSecondElectrode() override {}
    bool TakeSample(const std::string& mv) override {
        calls.push_back("sample " + mv);
        return takes;
    }
    void SampleTaken() override { calls.emplace_back("taken"); }
    void ReadingCancelled() override { calls.emplace_back("cancelled"); }
};

class SampleReadingTest : public testing::Test {
 protected:
    SampleReadingTest() {
        device.answer = {{1, PortNoError}};
        state.Channel = {0, 1, 1, 0, 0};
        state.CaliTemp = "25";
        state.Temperature[1] = "20";
        state.ASD = 0;
        link.StartLink();
        reading.Load();
    }
    /// A second passes, a frame arrives, the screen's timer ticks.
    void Second(const std::string& mv = "+1000", const std::string& sensor = "+7458") {
        host.seconds += 1;
        clock.now.second = (clock.now.second + 1) % 60;
        if (clock.now.second == 0) ++clock.now.minute;
        link.IntervalTick();
        for (const auto byte : Bytes(mv + "\t" + sensor + "\t+0025\t+7458"))
            device.received.push_back(byte);
        link.BytesArrived();
        reading.Tick();
    }

    AppState state;
    FakePort device;
    NotedPrompts prompts;
    FixedClock clock;
    ScriptedHost host;
    CommPort port{device, prompts, "/dev/null/kelvo/CommPort.ini"};
    Link link{state, port, device, prompts, clock, host};
    NotedHost method;
    SampleReading reading{state, prompts, clock, &link, &method};
};

TEST_F(SampleReadingTest, WaitsForTheFirstFrame) {
    reading.Tick();
    EXPECT_EQ(reading.Text1, "");
    EXPECT_EQ(reading.Ok(), Press::Waits) << "there is no value to take yet";
    Second("+0000");
    EXPECT_EQ(reading.Text1, "") << "a channel of exactly 0 holds the first tick";
    Second("-0123");
    EXPECT_EQ(reading.Text1, "-12.30");
    Second("+0000");
    EXPECT_EQ(reading.Text1, "0.00");
}

TEST_F(SampleReadingTest, AveragesWhatItShows) {
    state.ReadAvg = 3;
    reading.Load();
    Texts shown;
    for (const char* mv : {"+0100", "+0200", "+0300", "+0400"}) {
        Second(mv);
        shown.push_back(reading.Text1);
    }
    EXPECT_EQ(shown, (Texts{"10.00", "13.33", "20.00", "30.00"}));
}

TEST_F(SampleReadingTest, ASampleRestartsTheLinkAndForgetsItsValue) {
    Second();
    EXPECT_EQ(reading.Ok(), Press::Taken);
    EXPECT_EQ(method.calls, (Texts{"sample 100.00", "taken"}));
    EXPECT_TRUE(link.PortOpen());
    EXPECT_EQ(reading.Text1, "");
    EXPECT_EQ(reading.Ok(), Press::Waits) << "the value before must not be taken twice";
    Second("+0500");
    EXPECT_EQ(reading.Text1, "50.00");
    method.takes = false;
    EXPECT_EQ(reading.Ok(), Press::Refused);
    EXPECT_EQ(reading.Text1, "50.00") << "a refused sample leaves all as it is";
}

TEST_F(SampleReadingTest, AnAdditionTakesOneReading) {
    method.many = false;
    reading.Load();
    EXPECT_EQ(reading.Label1, "Please immerse the electrode in the sample, when the reading is stable, click on 'Ok'.");
    Second();
    EXPECT_EQ(reading.Ok(), Press::Taken);
    EXPECT_TRUE(link.PortOpen()) << "the method stops its own link";
}

TEST_F(SampleReadingTest, TheWaitEndsByItselfAndThePressTakesTheValue) {
    state.ASD = 1;
    state.ASDavg = 3;
    state.Waittime = 5;
    reading.Load();
    Second();
    EXPECT_EQ(reading.Ok(), Press::Waits);
    EXPECT_TRUE(reading.AtNow());
    EXPECT_TRUE(reading.hintIsRed);
    for (int i = 0; i < 4; ++i)
        Second();
    EXPECT_TRUE(reading.AtNow()) << "four seconds are not five";
    Second();
    EXPECT_FALSE(reading.AtNow());
    EXPECT_FALSE(reading.hintIsRed);
    EXPECT_EQ(reading.Label1, "      The reading is stable now, please click on 'Ok' to continue.");
    EXPECT_TRUE(method.calls.empty()) << "the analyst takes it";
    EXPECT_EQ(reading.Ok(), Press::Taken);
    EXPECT_EQ(method.calls.front(), "sample 100.00");
    Second();
    reading.Ok();
    EXPECT_EQ(reading.Ok(), Press::Taken) << "\"Now\" works at any moment";
}

TEST_F(SampleReadingTest, ThePresetTimeCountsDown) {
    state.ASD = 2;
    state.Preset = 2;
    Second();
    reading.Ok();
    EXPECT_EQ(reading.Label1,
              " Please wait for the pre-set time completed, or click on 'Now' to take the current displayed data.");
    Second();
    EXPECT_EQ(reading.lblCntDown, "Pre-set time countdown: 1");
    Second("+2000");
    EXPECT_EQ(reading.lblCntDown, "Pre-set time countdown: 0");
    EXPECT_FALSE(reading.AtNow());
}

TEST_F(SampleReadingTest, TemperatureIsJudgedOnceAndThenFlashes) {
    const std::string differs =
        "0Warning! there is more than 1°C difference between the sample and calibration temperature. This will "
        "increase "
        "the errors in your measurements. You are advised to make a new calibration using solutions at the same "
        "temperature as your sample.";
    const std::string fails =
        "The Temperature sensor is not working, please check the connection or re-configure the hardware setup.";
    const struct {
        const char* name;
        const char* sensor;
        const char *celsius, *fahrenheit;
        std::string message;
        std::vector<int> colours;
    } rows[] = {{"equal", "+7458", "25.0", "77.0", "", {15, 15, 15}},
                {"two degrees are not above two", "+7235", "27.0", "80.5", "", {15, 15, 15}},
                {"warmer", "+6887", "30.0", "86.0", differs, {15, 14, 15}},
                {"unplugged", "+9999", "-4.5", "23.8", fails, {15, 4, 15}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        prompts.messages.clear();
        reading.Load();
        for (const int colour : row.colours) {
            Second("+1000", row.sensor);
            EXPECT_EQ(method.colour, colour);
        }
        EXPECT_EQ(method.celsius, row.celsius);
        EXPECT_EQ(method.fahrenheit, row.fahrenheit);
        EXPECT_EQ(prompts.messages, row.message.empty() ? Texts{} : Texts{row.message});
    }
    state.Channel[2] = 0;
    Second();
    EXPECT_EQ(method.celsius + " " + method.fahrenheit, "20 68.0") << "without a sensor the default stands there";
}

TEST_F(SampleReadingTest, TheSecondElectrodeIsHandedOn) {
    state.Channel[3] = 1;
    Second();
    reading.correctPh = true;
    Second();
    EXPECT_EQ(method.calls, (Texts{"second 2.5", "second 2.5 corrected"}));
}

TEST_F(SampleReadingTest, CancelStopsTheLinkAndTheTicks) {
    Second();
    reading.Cancel();
    EXPECT_FALSE(link.PortOpen());
    EXPECT_EQ(method.calls, (Texts{"cancelled"}));
    reading.Text1 = "x";
    reading.Tick();
    EXPECT_EQ(reading.Text1, "x");
}

}  // namespace
}  // namespace kelvo
