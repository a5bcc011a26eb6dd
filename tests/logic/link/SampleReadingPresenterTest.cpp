#include "link/SampleReadingPresenter.h"

#include "link/LinkFakes.h"
#include "support/Joined.h"
#include "text/Number.h"

namespace kelvo::test {
namespace {

using Press = SampleReadingPresenter::Press;

/// A method that notes what the dialog does to it.
class NotedMethod : public ReadingClient {
 public:
    std::string prompt;
    std::optional<std::string> calibration;
    bool many = true, takes = true, live = false;
    std::string calls, temperature;
    int colour = -1;
    bool TakesManySamples() const override { return many; }
    std::string ReadingPrompt() const override { return prompt; }
    std::optional<std::string> CalibrationCelsius() const override { return calibration; }
    void ShowTemperature(const std::string& c, const std::string& f) override { temperature = c + " " + f; }
    void ColourTemperature(int c) override { colour = c; }
    void ShowSecondElectrode(float mv, bool corrected) override {
        calls += "second " + Format(mv, "#0.0") + (corrected ? " corrected, " : ", ");
    }
    void ShowNoSecondElectrode() override {}
    void ShowReadingState(const ReadingState& worth) override { live = worth.IsLive(); }
    void ShowLive(std::optional<float> mv) override { interval = mv; }
    std::optional<float> interval;
    bool TakeSample(const std::string& mv) override {
        calls += "sample " + mv + ", ";
        return takes;
    }
    void SampleTaken() override {
        calls += "taken, ";
        if (!next.empty()) prompt = next;
    }
    std::string next;  ///< what is read after a sample
    void ReadingCancelled() override { calls += "cancelled"; }
};

class SampleReadingPresenterTest : public LinkBench {
 protected:
    SampleReadingPresenterTest() {
        state.Channel = {0, 1, 1, 0, 0};
        state.CaliTemp = "25";
        state.Temperature[1] = "20";
        state.ASD = 0;
        link.StartLink();
        reading.Load();
    }
    /// A second passes, a frame arrives, the screen's timer ticks.
    std::string Second(const std::string& mv = "+1000", const std::string& sensor = "+7458") {
        Poll();
        Arrive(Bytes(mv + "\t" + sensor + "\t+0025\t+7458"));
        reading.Tick();
        return reading.Text1;
    }

    NotedMethod method;
    SampleReadingPresenter reading{state, prompts, clock, &link, &method};
};

TEST_F(SampleReadingPresenterTest, WaitsForTheFirstFrameAndAverages) {
    state.ReadAvg = 3;
    reading.Load();
    reading.Tick();
    EXPECT_EQ(reading.Ok(), Press::Waits) << "there is no value to take yet";
    // A channel of exactly 0 holds the first tick, and no later one.
    const std::pair<const char*, const char*> rows[] = {
        {"+0000", ""}, {"-0100", "-10.00"}, {"-0200", "-13.33"}, {"-0300", "-20.00"}, {"+0000", "-16.67"}};
    for (const auto& [mv, shown] : rows)
        EXPECT_EQ(Second(mv), shown);
}

TEST_F(SampleReadingPresenterTest, TellsWhatItsValueIsWorth) {
    const auto shown = [this] {
        // The interval of a value that is none of now would pass for one that is.
        EXPECT_EQ(method.interval ? Format(*method.interval, "#0.00") : "",
                  reading.State().IsLive() ? reading.Text1 : "");
        return reading.Text1 + "|" + ReadingStateText(reading.State());
    };
    reading.Tick();
    EXPECT_EQ(shown(), "|waiting for the first reading");
    Second("+1000", "+0000");
    EXPECT_EQ(shown(), "|temperature sensor 1 reads exactly 0: the first reading waits until it does not");
    Second();
    EXPECT_EQ(shown(), "100.00|");
    for (const auto& [seconds, text] : {std::pair{2.0, ""}, {0.5, "the value is 2 s old: no new reading since"}}) {
        clock.steady += seconds;
        reading.Tick();
        EXPECT_EQ(shown(), std::string("100.00|") + text);
        EXPECT_EQ(method.live, *text == 0);
    }
    Second("+1030");
    EXPECT_EQ(shown(), "103.00|");
    state.ReadAvg = 3;
    reading.AverageSet();
    for (const char* wanted : {"34.33|averaging: 1 of 3 readings", "68.67|averaging: 2 of 3 readings", "103.00|"}) {
        Second("+1030");
        EXPECT_EQ(shown(), wanted);
    }
    clock.steady += 12.5;
    reading.Tick();
    Second("+2000");
    EXPECT_EQ(shown(), "135.33|averaging: 1 of 3 readings") << "the rest stood for twelve seconds";
    EXPECT_EQ(reading.Ok(), Press::Taken) << "and may be taken all the same";
    EXPECT_EQ(shown(), "|waiting for the first reading");
}

TEST_F(SampleReadingPresenterTest, ASampleRestartsTheLinkAndForgetsItsValue) {
    state.ReadAvg = 3;
    reading.Load();
    Second();
    method.next = "Please immerse the electrode in the standard,";
    EXPECT_TRUE(reading.Ok() == Press::Taken && link.PortOpen());
    EXPECT_EQ(reading.Label1, method.next) << "what is asked for after the sample";
    method.prompt = "Please immerse the electrode in the sample after all,";
    reading.Tick();
    EXPECT_EQ(reading.Label1, method.prompt);
    EXPECT_EQ(reading.Ok(), Press::Waits) << "the value before must not be taken twice";
    Second("+0500");
    method.takes = false;
    EXPECT_EQ(reading.Ok(), Press::Refused);
    EXPECT_EQ(reading.Text1, "50.00") << "a refused sample leaves all as it is";
    reading.Cancel();
    reading.Text1 = "x";
    reading.Tick();
    EXPECT_EQ(Joined(link.PortOpen(), reading.Text1), "0|x") << "the ticks are over";
    EXPECT_EQ(method.calls, "sample 100.00, taken, sample 50.00, cancelled");
}

TEST_F(SampleReadingPresenterTest, AnAdditionTakesOneReading) {
    method.many = false;
    method.prompt = "Please immerse the electrode in the sample,";
    state.Channel[3] = 1;
    reading.Load();
    EXPECT_EQ(reading.Label1, "Please immerse the electrode in the sample,");
    Second();
    reading.correctPh = true;
    Second();
    EXPECT_TRUE(reading.Ok() == Press::Taken && link.PortOpen()) << "the method stops its own link";
    EXPECT_EQ(method.calls, "second 2.5, second 2.5 corrected, sample 100.00, taken, ");
    // For the next potential the method brings the dialog back; the frame that stood before is no reading of it.
    method.prompt = "Please add standard to the sample,";
    state.ReadAvg = 3;
    reading.Resume();
    reading.Tick();
    EXPECT_EQ(reading.Label1 + reading.Text1, "Please add standard to the sample,");
    EXPECT_EQ(reading.Ok(), Press::Waits);
    EXPECT_EQ(Second("+0500"), "50.00") << "no value from before the addition is averaged in";
}

TEST_F(SampleReadingPresenterTest, TheWaitEndsByItselfAndThePressTakesTheValue) {
    state.ASD = 1;
    state.ASDavg = 3;
    state.Waittime = 5;
    reading.Load();
    Second();
    EXPECT_EQ(reading.Ok(), Press::Waits);
    for (int i = 0; i < 4; ++i)
        Second();
    const auto hint = [this] { return Joined(reading.AtNow(), reading.hintIsRed, reading.Label1); };
    const std::string waits =
        "1|1| Please wait for the stable reading, or click on 'Now' to take the current displayed data.";
    EXPECT_EQ(hint(), waits) << "four seconds are not five";
    Second();
    EXPECT_EQ(hint(), "0|0|      The reading is stable now, please click on 'Ok' to continue.");
    Second("+1330");
    EXPECT_EQ(hint(), waits) << "it has left the threshold";
    for (int i = 0; i < 3; ++i)
        Second();
    EXPECT_FALSE(reading.AtNow());
    EXPECT_EQ(reading.Ok(), Press::Taken);
    state.ASD = 2;
    state.Preset = 2;
    Second();
    reading.Ok();
    Second("+2000");
    EXPECT_EQ(reading.lblCntDown, "Pre-set time countdown: 1");
    EXPECT_EQ(reading.Ok(), Press::Taken) << "\"Now\" works at any moment";
    EXPECT_EQ(method.calls, "sample 100.00, taken, sample 200.00, taken, ");
}

TEST_F(SampleReadingPresenterTest, TemperatureIsJudgedOnceAndThenFlashes) {
    const char* const differs =
        "0Warning! there is more than 1°C difference between the sample and calibration temperature. This will increase the errors in your measurements. You are advised to make a new calibration using solutions at the same temperature as your sample.";
    const char* const fails =
        "The Temperature sensor is not working, please check the connection or re-configure the hardware setup.";
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        {"+7230", "27.0 80.6", "", "15 15 15 "},
        {"+7229", "27.0 80.6", differs, "15 14 15 "},
        {"+7674", "23.0 73.4", differs, "15 14 15 "},
        {"+9999", "-4.5 23.8", fails, "15 4 15 "}};
    for (const auto& [sensor, temperature, message, wanted] : rows) {
        prompts.messages.clear();
        reading.Load();
        std::string colours;
        for (int second = 0; second < 3; ++second) {
            Second("+1000", sensor);
            colours += Joined(method.colour) + " ";
        }
        EXPECT_EQ(Joined(colours, method.temperature, prompts.messages), Joined(wanted, temperature, message));
    }
    method.calibration = "20";
    prompts.messages.clear();
    reading.Load();
    Second("+1000", "+7235");
    EXPECT_EQ(Joined(prompts.messages), differs) << "27.0 °C against a method's own 20 °C";
    state.Channel[2] = 0;
    for (const auto& [stored, shown] : {std::pair{"20", "20 68.0"}, {"", " "}, {"1E39", " "}}) {
        state.Temperature[1] = stored;
        Second();
        EXPECT_EQ(method.temperature, shown) << "without a sensor the default stands there";
    }
}

}  // namespace
}  // namespace kelvo::test
