#include "ph/LiveDisplay.h"

#include "core/NotedTable.h"
#include "link/LinkFakes.h"
#include "ph/PhCalibrationRun.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

class LiveDisplayTest : public LinkBench {
 protected:
    LiveDisplayTest() {
        table.fileToChoose = "RUN.PHT";
        state.pHMode = -1;
        state.Channel = {1, 0, 1, 1, 1};
        state.Temperature = {"", "21.0", "45.0"};
        state.BufferCount = {4, 2, 2};
        state.Buffers1 = {{}, {0, 7, 0}, {0, 4, 177}};
        state.Buffers2 = {{}, {0, 7, 0}, {0, 4, 180}};
        state.PhCaliTemp = {0, 25, 25};
        state.PhCaliDate = {"", "20/11/2026 09:00", "21/11/2026 10:00"};
        state.ElectrodeNum = state.FileElectrodeNum = state.PhCaliElectrode = {"", "PH-1", "PH-2"};
        Open();
    }
    void Open() {
        link.StartLink();
        display.Load();
    }
    /// A second passes; a frame comes unless it is empty; the screen ticks.
    void Second(const std::string& frame = {}) {
        Poll();
        if (!frame.empty()) Arrive(Bytes(frame));
        display.Tick();
        display.Tell();
    }
    /// pH of electrode 1, what it is worth, and whether it is of now.
    std::string Worth() const { return Joined(display.Shown(0).ph, display.Shown(0).worth, display.Shown(0).live); }
    /// "pH1 mV1 °C °F|pH2 mV2 °C °F".
    std::string Shown() const {
        std::string text;
        for (int e = 0; e < 2; ++e)
            text += (e == 0 ? "" : "|") + display.Shown(e).ph + " " + display.Shown(e).mv + " " + display.Text(2 * e) +
                    " " + display.Text(2 * e + 1);
        return text;
    }

    NotedTable table{state};
    ScriptedFiles files;
    LiveDisplay display{state, prompts, files, clock, &link, table};
};

constexpr const char* Warm = "+1180\t+7458\t+0600\t+6887";  // 118 mV at 25 °C, 60 mV at 30 °C

TEST_F(LiveDisplayTest, ShowsWhatTheChannelsTell) {
    const std::tuple<const char*, const char*, std::int16_t, bool, const char*, const char*> rows[] = {
        {"two of each", "10111", 2, false, "   |   ", "5.00 118.0 25.0 77.0|6.00 60.0 30.0 86.0"},
        // 7 - 1 · 298.15 / 303.15 at 30 °C
        {"compensated", "10111", 2, true, "   |   ", "5.00 118.0 25.0 77.0|6.02 60.0 30.0 86.0"},
        // 7 - 2 · 298.15 / 294.15, 7 - 1 · 298.15 / 318.15
        {"no sensors", "10010", 2, true, "  21.0 69.8|  45.0 113.0", "4.97 118.0 21.0 69.8|6.06 60.0 45.0 113.0"},
        {"one sensor for both", "10110", 1, false, "   |   ", "5.00 118.0 25.0 77.0|6.00 60.0 25.0 77.0"},
        {"electrode 1 alone", "10100", 2, false, "   |  45.0 113.0", "5.00 118.0 25.0 77.0|  45.0 113.0"},
        {"an ISE on channel 1 lends its sensor", "01110", 2, true, "   |   ", "   |6.00 60.0 25.0 77.0"},
        {"the only sensor, lent", "01110", 1, true, "   |   ", "   |6.00 60.0 25.0 77.0"},
        {"ISE, no sensor", "01010", 2, true, "  21.0 69.8|  45.0 113.0", "  21.0 69.8|6.06 60.0 45.0 113.0"},
        {"ISE, and sensor 2", "01011", 2, true, "  21.0 69.8|   ", "  21.0 69.8|6.02 60.0 30.0 86.0"},
    };
    for (const auto& [name, channels, sensors, atc, opened, shown] : rows) {
        SCOPED_TRACE(name);
        SetChannels(channels);
        state.SensorCount = sensors;
        Open();
        for (const int e : {0, 1})
            display.SetAtc(e, atc);
        Second();
        EXPECT_EQ(Shown(), opened) << "nothing before the first frame";
        Second(Warm);
        EXPECT_EQ(Shown(), shown);
    }
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(LiveDisplayTest, ErrorOutsideTheScale) {
    // Electrode 2 makes 60 mV a pH: 420 mV is pH 0, -420 mV is pH 14.
    const std::pair<const char*, const char*> rows[] = {{"+4200", ".00|not yet steady"},
                                                        {"+4201", "Error|outside pH 0 to 14"},
                                                        {"-4200", "14.00|not yet steady"},
                                                        {"-4201", "Error|outside pH 0 to 14"},
                                                        {"+3900", ".50|not yet steady"}};
    for (const auto& [mv, seen] : rows) {
        Second(std::string("+0000\t+7458\t") + mv + "\t+7458");
        EXPECT_EQ(Joined(display.Shown(1).ph, display.Shown(1).worth), seen) << mv;
    }
}

TEST_F(LiveDisplayTest, ASensorThatFailsIsToldOnceAndFlashes) {
    const char* const lost = "+1180\t+9999\t+0600\t+9999";
    Second(Warm);
    std::string colours;
    for (int i = 0; i < 4; ++i) {
        Second(lost);
        colours += std::to_string(display.Background(0)) + "," + std::to_string(display.Background(1)) + " ";
    }
    EXPECT_EQ(colours, "15,15 4,4 15,15 4,4 ");
    EXPECT_EQ(prompts.messages, (std::vector<std::string>{text::SensorFailed1, text::SensorFailed2}));
    Second(Warm);
    EXPECT_EQ(display.Background(0), 15) << "a good one is white";
    display.SetAtc(0, true);
    Second(lost);
    EXPECT_EQ(Joined(display.Background(0), prompts.messages.size()), "4|2") << "latched";
    const auto told = [this](int e) { return Joined(display.Shown(e).worth, display.Shown(e).doubt); };
    EXPECT_EQ(told(0), "ATC by a sensor that does not work|temperature sensor 1 does not work");
    for (int i = 0; i < 20; ++i)
        Second("+1180\t+0000\t+0600\t+7458");
    EXPECT_EQ(told(0), "ATC by a sensor that does not work|temperature sensor 1 tells 110.9 °C: is it connected?");
    EXPECT_EQ(told(1), "steady|") << "the other electrode has its own";
    state.SensorCount = 1;
    display.SetAtc(1, true);
    Second("+1180\t+0000\t+0600\t+7458");
    EXPECT_EQ(told(1), told(0)) << "or the only one there is";
}

TEST_F(LiveDisplayTest, TheDisplayGoesOnBehindAMessage) {
    std::string behind;
    prompts.during = [&] {
        prompts.during = nullptr;
        Second("+0590\t+9999\t+0600\t+7458");
        behind = display.Shown(0).ph;
    };
    Second("+1180\t+9999\t+0600\t+7458");
    EXPECT_EQ(Joined(behind, prompts.messages.size()), "6.00|1");
}

TEST_F(LiveDisplayTest, ABadTableStopsItOnce) {
    state.Buffers1 = {{}, {0, 7, 0}, {0, 7, 177}};
    Open();
    for (int i = 0; i < 3; ++i)
        Second(Warm);
    EXPECT_EQ(Joined(prompts.messages, display.Running(), display.Shown(0).ph),
              Joined(text::BadPhCalibration, "0|Error"));
    display.Restart();
    Second(Warm);
    EXPECT_EQ(Joined(prompts.messages.size(), display.Running()), "2|0");
}

TEST_F(LiveDisplayTest, TellsHowOldAndHowSteadyAValueIs) {
    EXPECT_EQ(Worth(), "|waiting for the first reading|0");
    for (int i = 0; i < 20; ++i) {
        Second(Warm);
        display.Tick();  // of the same frame
        EXPECT_EQ(Worth(), i < 19 ? "5.00|not yet steady|1" : "5.00|steady|1");
    }
    for (int i = 0; i < 5; ++i)
        Second();
    EXPECT_EQ(Worth(), "5.00|5 s old|0") << "the last value stands";
    Second(Warm);
    EXPECT_EQ(Worth(), "5.00|not yet steady|1");
    state.BufferCount[1] = 0;
    Open();
    Second(Warm);
    EXPECT_EQ(Joined(Worth(), display.Shown(0).mv, display.Running()), "|no calibration|1||1");
}

TEST_F(LiveDisplayTest, StopHoldsAndRestartFillsTheAverageAnew) {
    state.ReadAvg = 4;
    Open();
    Second(Warm);
    display.Stop();
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(Worth(), "5.00|stopped at 09:05:07|0");
    EXPECT_TRUE(link.PortOpen()) << "the link goes on";
    display.Restart();
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(Worth(), "7.00|not yet steady|1");
    Second("+0708\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).mv, "17.7") << "a quarter of the step";
}

TEST_F(LiveDisplayTest, AfterItsLastTickItSaysThatItHasStopped) {
    for (int i = 0; i <= 32000; ++i) {
        clock.steady += 1;
        state.Reading[0] = 118;
        Arrive(Bytes(Warm));
        if (i == 0) link.IntervalTick(), Arrive(Bytes(Warm));
        display.Tick();
    }
    EXPECT_TRUE(display.Running());
    display.Tick();
    EXPECT_FALSE(display.Running());
    EXPECT_NE(display.Status().find("stopped"), std::string::npos);
}

TEST_F(LiveDisplayTest, ARowKeepsWhatWasShown) {
    EXPECT_FALSE(display.SaveRow());
    EXPECT_EQ(display.Status(), "There is no reading to keep yet.");
    Second(Warm);
    EXPECT_TRUE(display.SaveRow());
    EXPECT_EQ(table.asked, "at once|All Data(*.pht)|*.pht|*.pht|.pht");
    EXPECT_EQ(table.rows.back(), " 1\t\t09:05\t5.00\t118.0\t25.0\t77.0\t6.00\t60.0\t30.0\t86.0");
    EXPECT_EQ(Joined(state.TableFile, display.Status(), table.facts.back().Get(fact::Remark)),
              "RUN.PHT||electrode 1: not yet steady; electrode 2: not yet steady");
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(Joined(display.Shown(0).ph, display.Shown(0).live), "5.00|0") << "held while the row is numbered";
    display.RowDone();
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).ph, "7.00");
    state.PhCaliElectrode[1] = "PH-9";
    display.Stop();
    table.fileToChoose.clear();
    EXPECT_TRUE(display.SaveRow());
    EXPECT_EQ(table.calls, "ask ") << "no second question for a file";
    EXPECT_EQ(display.Status(), "Row 2 keeps a value that was not live: stopped at 09:05:07.");
    EXPECT_EQ(table.facts.back().Get(fact::Remark),
              "electrode 1: stopped at 09:05:07; electrode 1: calibrated with electrode PH-9; "
              "electrode 2: stopped at 09:05:07");
    state.TableOpen = 0;
    EXPECT_TRUE(display.SaveRow());
    EXPECT_EQ(state.TableFile, "-999") << "a cancelled chooser stands for no file";
}

TEST_F(LiveDisplayTest, ChangingTheCalibration) {
    const ScratchFolder folder;
    folder.Put("A.CLI",
               "\"d1\"\r\n\" 25\"\r\n\"OTHER\"\r\n\" 2\"\r\n\"d2\"\r\n\" 25\"\r\n\"PH-2\"\r\n\" 2\"\r\n"
               "\" 10\"\r\n\"-177\"\r\n\" 7\"\r\n\" 0\"\r\n\" 7\"\r\n\" 0\"\r\n\" 4\"\r\n\" 180\"\r\n");
    files.Expect(std::nullopt);
    display.ChangeCalibration();
    EXPECT_EQ(display.Shown(0).buffers + "; " + display.Shown(0).date, "7, 4; 20/11/2026 09:00");
    files.Expect(folder / "A.CLI");
    display.ChangeCalibration();
    EXPECT_EQ(
        prompts.messages,
        std::vector<std::string>{
            "Warning: The pH electrode serial number is different from calibration. Please use Option/View Data for more details"});
    EXPECT_EQ(display.Shown(0).buffers + "; " + display.Shown(0).date + "; " + display.Shown(0).serial,
              "10, 7; d1; PH-1");
    EXPECT_EQ(display.Shown(0).doubt, "calibrated with electrode OTHER; calibrated on a date that cannot be told");
}

TEST_F(LiveDisplayTest, TypedTemperatures) {
    state.Channel[2] = 0;
    Open();
    display.SetAtc(0, true);
    display.Edited(0, "35");
    display.Enter(0);
    EXPECT_EQ(display.Text(1), "95.0");
    Second(Warm);
    EXPECT_EQ(display.Text(0), "35") << "a tick does not take it back";
    EXPECT_EQ(display.Shown(0).ph, "5.06");  // 7 - 2 · 298.15 / 308.15
    display.Edited(1, "50");
    display.Enter(1);
    EXPECT_EQ(display.Text(0), "10.0");
    // Beyond 32 bits, it or its counterpart, and below absolute zero: the message, and the value before.
    const std::string fives(45, '5');
    for (const auto& [box, typed] : {std::pair<int, std::string>{0, "1E39"}, {1, fives}, {0, "3E38"}, {1, "-500"}}) {
        display.Edited(box, typed);
        Second(Warm);
        EXPECT_EQ(display.Shown(0).ph, "4.89") << "what is being typed does not count";  // 7 - 2 · 298.15 / 283.15
        display.Left(box);
        EXPECT_NE(display.Status().find("10.0 °C stands"), std::string::npos) << "no box when the screen goes";
        display.Edited(box, typed);
        display.Enter(box);
        EXPECT_EQ(Joined(display.Text(0), display.Text(1)), "10.0|50") << typed;
    }
    display.Tell();
    EXPECT_EQ(Joined(prompts.messages.size(), prompts.messages.back()), "4|Data out of range, please try again.");
    state.Temperature[1] = fives;
    Open();
    display.SetAtc(0, true);
    Second(Warm);
    EXPECT_EQ(Joined(display.Text(1), display.Shown(0).ph, display.Shown(0).worth),
              "|5.00|not yet steady, no ATC: the temperature is none");
    for (const auto& [typed, told] : {std::pair{"", "not yet steady, ATC by no temperature: it counts as 0 °C|"},
                                      {"101", "not yet steady, ATC|temperature outside 0 to 100 °C"}}) {
        display.Edited(0, typed);
        Second(Warm);
        EXPECT_EQ(Joined(display.Shown(0).worth, display.Shown(0).doubt), told);
    }
}

TEST_F(LiveDisplayTest, LeavingStopsTheLinkAndClosesTheTable) {
    state.CaliDirty = 1;
    state.PhPath[2] = 1;
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    EXPECT_FALSE(display.Exit());
    EXPECT_TRUE(display.Running() && link.PortOpen());
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    EXPECT_TRUE(display.Exit());
    EXPECT_EQ(Joined(link.PortOpen(), table.calls, state.ReturnScreen, state.CaliDirty, state.PhPath[2]),
              "0|leave |0|1|0")
        << "dirty, the table would bring the display back";
}

}  // namespace
}  // namespace kelvo::test
