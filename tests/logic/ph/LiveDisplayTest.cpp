#include "ph/LiveDisplay.h"

#include "link/LinkFakes.h"
#include "ph/PhCalibrationRun.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// A table that notes what is asked of it.
class NotedTable : public WorkingTable {
 public:
    std::vector<std::string> rows;
    bool named = true;
    int left = 0;
    AppState* state = nullptr;

    void SetMethodHead(const MethodHead&) override {}
    int RowCount() const override { return static_cast<int>(rows.size()); }
    std::string NextRowNumber() override { return " " + std::to_string(rows.size() + 1); }
    void AddRow(const std::string& row) override {
        rows.push_back(row);
        state->TableOpen = 1;
    }
    void DropRow() override { rows.pop_back(); }
    void FillRows(std::vector<std::string>) override {}
    bool AskFile(const TableFileRequest& request) override {
        EXPECT_EQ(request.question, nullptr);
        EXPECT_STREQ(request.filter, "All Data(*.pht)|*.pht");
        EXPECT_STREQ(request.extension, ".pht");
        if (named) state->TableFile = "RUN.PHT";
        return named;
    }
    SaveOutcome KeepRows() override { return SaveOutcome::Saved; }
    SaveOutcome Save() override { return SaveOutcome::Saved; }
    void Prompt(const std::string&) override {}
    void Leave(const std::string&) override {
        ++left;
        EXPECT_EQ(state->CaliDirty, 0) << "the table would bring the display back";
    }
    void Unload() override {}
    std::string LiveHead() override { return {}; }
    bool LookAtFile() override { return false; }
    std::vector<std::string> RowsLookedAt() const override { return {}; }
};

class LiveDisplayTest : public LinkBench {
 protected:
    LiveDisplayTest() {
        table.state = &state;
        state.pHMode = -1;
        state.Channel = {1, 0, 1, 1, 1};
        state.Temperature = {"", "21.0", "22.0"};
        state.BufferCount = {4, 2, 2};
        state.Buffers1 = {{}, {0, 7, 0}, {0, 4, 177}};
        state.Buffers2 = {{}, {0, 7, 0}, {0, 4, 180}};
        state.PhCaliTemp = {0, 25, 25};
        state.PhCaliDate = {"", "01/11/2026 09:00", "02/11/2026 10:00"};
        state.ElectrodeNum = state.FileElectrodeNum = {"", "PH-1", "PH-2"};
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
    /// "pH1 mV1 °C °F|pH2 mV2 °C °F".
    std::string Shown() const {
        std::string text;
        for (int e = 0; e < 2; ++e)
            text += (e == 0 ? "" : "|") + display.Shown(e).ph + " " + display.Shown(e).mv + " " + display.Text(2 * e) +
                    " " + display.Text(2 * e + 1);
        return text;
    }

    NotedTable table;
    ScriptedFiles files;
    LiveDisplay display{state, prompts, files, clock, &link, table};
};

constexpr const char* Warm = "+1180\t+7458\t+0600\t+6887";  // 118 mV at 25 °C, 60 mV at 30 °C

TEST_F(LiveDisplayTest, ShowsWhatTheChannelsTell) {
    const struct {
        const char* name;
        std::array<std::int16_t, 5> channel;
        std::int16_t sensors;
        bool atc;
        const char* opened;
        const char* shown;
    } rows[] = {
        {"two of each", {1, 0, 1, 1, 1}, 2, false, "   |   ", "5.00 118.0 25.0 77.0|6.00 60.0 30.0 86.0"},
        // 7 - 1 · 298.15 / 303.15 at 30 °C
        {"compensated", {1, 0, 1, 1, 1}, 2, true, "   |   ", "5.00 118.0 25.0 77.0|6.02 60.0 30.0 86.0"},
        {"no sensors",
         {1, 0, 0, 1, 0},
         2,
         false,
         "  21.0 69.8|  22.0 71.6",
         "5.00 118.0 21.0 69.8|6.00 60.0 22.0 71.6"},
        // 7 - 2 · 298.15 / 294.15, 7 - 1 · 298.15 / 295.15
        {"no sensors, compensated",
         {1, 0, 0, 1, 0},
         2,
         true,
         "  21.0 69.8|  22.0 71.6",
         "4.97 118.0 21.0 69.8|5.99 60.0 22.0 71.6"},
        {"one sensor for both", {1, 0, 1, 1, 0}, 1, false, "   |   ", "5.00 118.0 25.0 77.0|6.00 60.0 25.0 77.0"},
        {"electrode 1 alone", {1, 0, 1, 0, 0}, 2, false, "   |  22.0 71.6", "5.00 118.0 25.0 77.0|  22.0 71.6"},
        {"an ISE on channel 1 lends its sensor", {0, 1, 1, 1, 0}, 2, true, "   |   ", "   |6.00 60.0 25.0 77.0"},
        {"the only sensor, lent", {0, 1, 1, 1, 0}, 1, true, "   |   ", "   |6.00 60.0 25.0 77.0"},
        // 7 - 1 · 298.15 / 294.15: the boxes of channel 1
        {"an ISE without sensor",
         {0, 1, 0, 1, 0},
         2,
         true,
         "  21.0 69.8|  22.0 71.6",
         "  21.0 69.8|5.99 60.0 22.0 71.6"},
        {"an ISE, and sensor 2", {0, 1, 0, 1, 1}, 2, true, "  21.0 69.8|   ", "  21.0 69.8|6.02 60.0 30.0 86.0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        state.Channel = row.channel;
        state.SensorCount = row.sensors;
        Open();
        for (const int e : {0, 1})
            display.SetAtc(e, row.atc);
        EXPECT_EQ(Shown(), row.opened);
        Second();
        EXPECT_EQ(Shown(), row.opened) << "nothing before the first frame";
        Second(Warm);
        EXPECT_EQ(Shown(), row.shown);
    }
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(LiveDisplayTest, ErrorOutsideTheScale) {
    // Electrode 2 makes 60 mV a pH: 420 mV is pH 0, -420 mV is pH 14.
    const std::pair<const char*, const char*> rows[] = {
        {"+4200", ".00"}, {"+4201", "Error"}, {"-4200", "14.00"}, {"-4201", "Error"}, {"+3900", ".50"}};
    for (const auto& [mv, ph] : rows) {
        Second(std::string("+0000\t+7458\t") + mv + "\t+7458");
        EXPECT_EQ(display.Shown(1).ph, ph) << mv;
        EXPECT_EQ(display.Shown(1).worth, std::string(ph) == "Error" ? "outside pH 0 to 14" : "not yet steady");
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
    EXPECT_EQ(display.Background(0), 4);
    EXPECT_EQ(prompts.messages.size(), 2u) << "latched";
    EXPECT_NE(display.Shown(0).worth.find("ATC by a sensor that does not work"), std::string::npos);
}

TEST_F(LiveDisplayTest, TheDisplayGoesOnBehindAMessage) {
    std::string behind;
    prompts.during = [&] {
        prompts.during = nullptr;
        Second("+0590\t+9999\t+0600\t+7458");
        behind = display.Shown(0).ph;
    };
    Second("+1180\t+9999\t+0600\t+7458");
    EXPECT_EQ(behind, "6.00");
    EXPECT_EQ(prompts.messages.size(), 1u);
}

TEST_F(LiveDisplayTest, ABadTableStopsItOnce) {
    state.Buffers1 = {{}, {0, 7, 0}, {0, 7, 177}};
    Open();
    for (int i = 0; i < 3; ++i)
        Second(Warm);
    EXPECT_EQ(prompts.messages, std::vector<std::string>{text::BadPhCalibration});
    EXPECT_FALSE(display.Running());
    EXPECT_EQ(display.Shown(0).ph, "Error");
    display.Restart();
    Second(Warm);
    EXPECT_EQ(prompts.messages.size(), 2u);
    EXPECT_FALSE(display.Running());
}

TEST_F(LiveDisplayTest, TellsHowOldAndHowSteadyAValueIs) {
    EXPECT_EQ(display.Shown(0).worth, "waiting for the first reading");
    std::string worth;
    for (int i = 0; i < 10; ++i) {
        Second(Warm);
        worth = display.Shown(0).worth;
        EXPECT_EQ(worth, i < 9 ? "not yet steady" : "steady");
        EXPECT_TRUE(display.Shown(0).live);
    }
    for (int i = 0; i < 5; ++i)
        Second();
    EXPECT_EQ(display.Shown(0).worth, "5 s old");
    EXPECT_FALSE(display.Shown(0).live);
    EXPECT_EQ(display.Shown(0).ph, "5.00") << "the last value stands";
    Second(Warm);
    EXPECT_EQ(display.Shown(0).worth, "not yet steady");
    state.BufferCount[1] = 0;
    Open();
    Second(Warm);
    EXPECT_EQ(display.Shown(0).worth, "no calibration");
}

TEST_F(LiveDisplayTest, StopHoldsAndRestartFillsTheAverageAnew) {
    state.ReadAvg = 4;
    Open();
    Second(Warm);
    display.Stop();
    EXPECT_EQ(display.Shown(0).worth, "stopped at 09:05:07");
    EXPECT_FALSE(display.Shown(0).live);
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).ph, "5.00");
    EXPECT_TRUE(link.PortOpen()) << "the link goes on";
    display.Restart();
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).ph, "7.00");
    EXPECT_TRUE(display.Shown(0).live);
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
    EXPECT_EQ(table.rows.back(), " 1\t\t09:05\t5.00\t118.0\t25.0\t77.0\t6.00\t60.0\t30.0\t86.0");
    EXPECT_EQ(state.TableFile, "RUN.PHT");
    EXPECT_EQ(display.Status(), "");
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).ph, "5.00") << "held while the row is numbered";
    EXPECT_FALSE(display.Shown(0).live);
    display.RowDone();
    Second("+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(display.Shown(0).ph, "7.00");
    display.Stop();
    table.named = false;
    EXPECT_TRUE(display.SaveRow()) << "no second question for a file";
    EXPECT_EQ(display.Status(), "Row 2 keeps a value that was not live: stopped at 09:05:07.");
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
    EXPECT_EQ(display.Shown(0).buffers + "; " + display.Shown(0).date, "7, 4; 01/11/2026 09:00");
    files.Expect(folder / "A.CLI");
    display.ChangeCalibration();
    EXPECT_EQ(
        prompts.messages,
        std::vector<std::string>{
            "Warning: The pH electrode serial number is different from calibration. Please use Option/View Data for more details"});
    EXPECT_EQ(display.Shown(0).buffers + "; " + display.Shown(0).date + "; " + display.Shown(0).serial,
              "10, 7; d1; PH-1");
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
}

TEST_F(LiveDisplayTest, LeavingStopsTheLinkAndClosesTheTable) {
    state.CaliDirty = 1;
    state.PhPath[2] = 1;
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    EXPECT_FALSE(display.Exit());
    EXPECT_TRUE(display.Running() && link.PortOpen());
    prompts.ExpectAsk("Are you sure you want to exit?", true);
    EXPECT_TRUE(display.Exit());
    EXPECT_FALSE(link.PortOpen());
    EXPECT_EQ(table.left, 1);
    EXPECT_EQ(Joined(state.ReturnScreen, state.CaliDirty, state.PhPath[2]), "0|1|0");
}

}  // namespace
}  // namespace kelvo::test
