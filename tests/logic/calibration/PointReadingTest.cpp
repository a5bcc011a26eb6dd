#include "calibration/PointReading.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

/// An interface of the test's own making.
struct Source : ReadingSource {
    void Open() override {}
    bool Take() override { return live; }
    void Count() override { ++counted; }
    std::string MvText() const override { return "12.60"; }
    float Celsius() const override { return celsius; }
    void StartWait() override { ++waits; }
    Verdict Judge(const std::string& displayed) override {
        judged = displayed;
        return waits == 0 ? Verdict::NotWaiting : stable ? Verdict::Stable : Verdict::Waiting;
    }
    std::string CountDown() const override { return "9 s"; }
    void ResizeAverage() override { ++resized; }
    void SettingsAccepted() override {}

    bool live = true, stable = false;
    float celsius = 24.96f;
    int counted = 0, waits = 0, resized = 0;
    std::string judged;
};

struct Dialog {
    explicit Dialog(int asd) {
        state.ASD = static_cast<std::int16_t>(asd);
        state.IonIndex = Fluoride;
        state.OnLine = true;
        state.CurrentPoint = 1;
        state.PointRunning = 1;  // left by an earlier dialog
        form.Begin();
        reading.Open();
    }
    std::string Shown() const {
        return Joined(form.Text(PointForm::Potential), reading.OkCaption(), reading.HintIsRed(), reading.CountDown());
    }
    AppState state;
    ScriptedPrompts prompts;
    PointForm form{state, prompts};
    Source live;
    PointReading reading{state, prompts, form, live};
};

TEST(PointReading, TheWaitRunsFromTheConcentrationToTheStableReading) {
    const char* const hints[] = {
        "Immerse the electrode in the solution, when the reading is stable, click on 'OK'.",
        "Please wait for the stable reading, or click on 'Now' to take the current displayed data.",
        "Please wait for the pre-set time, or click on 'Now' to take the current displayed data."};
    for (int asd = 0; asd <= 2; ++asd) {
        Dialog d(asd);
        const std::string hint = hints[asd], waiting = asd == 0 ? "|OK|0|" : "|Now|1|";
        EXPECT_EQ(d.Shown(), "|OK|0|") << asd;
        d.reading.StartMeasurement();
        EXPECT_EQ(d.Shown() + d.reading.Hint(), waiting + hint) << asd;
        EXPECT_EQ(d.live.waits, asd > 0 ? 1 : 0);
        d.reading.Tick();
        EXPECT_EQ(d.Shown(), "12.60" + waiting + "9 s") << asd;
        EXPECT_EQ(d.live.judged, "12.60");
        d.live.stable = true;
        d.reading.Tick();
        EXPECT_EQ(d.Shown(), "12.60|OK|0|9 s") << asd;
        EXPECT_EQ(d.reading.Hint(), asd == 0 ? hint : "The reading is stable now, please click on 'Ok' to continue.");
        d.live.stable = false;
        d.reading.Tick();
        EXPECT_EQ(d.Shown() + d.reading.Hint(), "12.60" + waiting + "9 s" + hint) << "it is taken back";
        d.live.stable = true;
        d.reading.Tick();
        d.live.live = false;
        d.reading.Tick();
        EXPECT_EQ(Joined(d.Shown(), d.live.counted), "12.60|OK|0||4") << "no frame, no tick";
    }
}

TEST(PointReading, TheSensorFillsTheTemperatureAndIsMissedOnce) {
    Dialog d(0);
    d.state.CaliTemp = "20";
    d.reading.Tick();
    EXPECT_EQ(d.state.CaliTemp, "20") << "no sensor in use";
    d.state.Channel[2] = 1;
    d.reading.Tick();
    EXPECT_EQ(Joined(d.state.CaliTemp, d.form.Text(PointForm::Celsius), d.form.Text(PointForm::Fahrenheit)),
              "25.0|25.0|76.9");
    d.live.celsius = -0.1f;
    d.prompts.ExpectMessage(
        "The Temperature sensor is not working, please check the connection or re-configure the hardware setup.");
    d.reading.Tick();
    d.reading.Tick();
    EXPECT_EQ(d.state.CaliTemp, "25.0");
    d.prompts.ExpectInput("Average Setup", "5");
    d.reading.AskAverage();
    d.prompts.ExpectInput("Average Setup", std::nullopt);
    d.reading.AskAverage();
    EXPECT_EQ(Joined(d.state.ReadAvg, d.live.resized), "5|1");
}

}  // namespace
}  // namespace kelvo::test
