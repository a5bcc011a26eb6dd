#include "ph/PhCalibrationRun.h"

#include "app/AppState.h"
#include "core/Settings.h"
#include "link/LinkFakes.h"
#include "ph/BufferForm.h"
#include "ph/PhCalibrationFile.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// The last calibration saved: electrode 1 with one buffer pair, taken at 20 °C.
const char* const LastFile =
    "\"01/01/2026 00:00\"\r\n\" 20\"\r\n\"OLD\"\r\n\" 2\"\r\n\"\"\r\n\" 0\"\r\n\"\"\r\n\" 0\"\r\n"
    "\" 4\"\r\n\" 170\"\r\n\" 7\"\r\n\" 3\"\r\n";

const char* const SaveQuestion = "Would you like to save the calibration data and use them for the measurement?";

class PhCalibrationRunTest : public LinkBench {
 protected:
    PhCalibrationRunTest() {
        state.DataPath = state.AppPath = folder.Path();
        state.IniPath = folder / "KELVO.ini";
        state.Channel = {1, 0, 1, 1, 1};
        state.Temperature = {"", "21.0", "22.0"};
        state.ElectrodeNum = {"", "PH-1", "PH-2"};
        folder.Put("LAST.CLI", LastFile);
        WriteSetting("Latest Calibration Value", "LastCaliFile", folder / "LAST.CLI", state.IniPath);
        LoadLastPhCalibration(state, prompts, files);
    }

    /// A second passes and a frame arrives.
    void Second(const std::string& frame) {
        Poll();
        Arrive(Bytes(frame));
        form.Tick();
    }
    /// One buffer through the dialog: reads the frame, types the pH, presses OK.
    void Buffer(const char* ph, const std::string& frame) {
        ASSERT_TRUE(run.NextBuffer());
        form.Load();
        Second(frame);
        form.Edited(BufferForm::Ph, ph);
        ASSERT_TRUE(form.Ok());
        run.Take();
    }
    void Cancel() {
        ASSERT_TRUE(run.NextBuffer());
        form.Load();
        form.Cancel();
        run.Take();
    }
    /// pH 7, then the second one at 177 mV, of both electrodes.
    void TwoBuffers(const char* second) {
        Buffer("7", "+0000\t+7458\t+0000\t+7458");
        Buffer(second, "+1770\t+7458\t+1770\t+7458");
    }
    /// The files that the run would leave at a sudden end: their buffers, "pH mV, pH mV, / pH mV, ".
    std::string Kept() const {
        std::string text;
        for (const UnsavedPiece& piece : run.Unsaved()) {
            AppState kept;
            ReadPh(kept, piece.bytes);
            text += piece.extension + " " + Buffers(kept, 1) + "/ " + Buffers(kept, 2) + "; ";
        }
        return text;
    }
    static std::string Buffers(const AppState& state, std::size_t e) {
        std::string text;
        const auto& table = e == 1 ? state.Buffers1 : state.Buffers2;
        for (int i = 1; i <= state.BufferCount[e]; ++i) {
            const auto& row = table.at(static_cast<std::size_t>(i));
            text += Joined(row[1]) + " " + Joined(row[2]) + ", ";
        }
        return text;
    }
    /// What is in force: "count|date|temperature|serial|pH mV, pH mV, " of an electrode.
    std::string InForce(std::size_t e) const {
        return Joined(state.BufferCount[e], state.PhCaliDate[e], state.PhCaliTemp[e], state.FileElectrodeNum[e]) + "|" +
               Buffers(state, e);
    }

    ScratchFolder folder;
    ScriptedFiles files;
    PhCalibrationRun run{state, prompts, files, clock, &link};
    BufferForm form{state, prompts, clock, &link};
};

TEST(CheckPhCalibration, LooksAtTheLastTwoRows) {
    const std::tuple<BufferTable, int, bool> rows[] = {
        {{{}, {0, 7, 0}, {0, 4, 177}}, 2, true},
        {{{}, {0, 4, 177}, {0, 7, 0}}, 2, true},
        {{{}, {0, 7, 0}, {0, 7, 177}}, 2, false},
        {{{}, {0, 7, 177}, {0, 4, 177}}, 2, false},
        {{{}, {0, 7, 0}, {0, 7, 0}, {0, 4, 177}}, 3, true},
        {{{}, {0, 7, 0}, {0, 4, 177}, {0, 4, 170}}, 3, false},
        {{{}, {0, 7, 20}}, 1, true},
        {{{}, {0, 7, 0}}, 1, false},
        {{{}, {0, 0, 20}}, 1, false},
    };
    for (const auto& [table, count, good] : rows)
        EXPECT_EQ(CheckPhCalibration(table, count), good) << count << " " << table[1][1] << " " << table[1][2];
}

TEST_F(PhCalibrationRunTest, TwoElectrodesFromBuffersToFile) {
    run.Begin(2, 3);
    EXPECT_EQ(state.BufferCount[0], 5);
    Buffer("7.00", "+0000\t+7458\t+9999\t+9999");
    EXPECT_EQ(Kept(), "") << "one buffer would open as a line through zero";
    EXPECT_EQ(state.PhCaption, "Electrode 1");
    EXPECT_EQ(
        state.PhPrompt,
        "Please type in the pH of the buffer in the box below and press 'Enter', then Immerse Electrode 1 in the solution, when Reading is stable click on 'OK'");
    clock.now.minute = 30;
    Buffer("4.00", "+1770\t+6887\t+9999\t+9999");
    EXPECT_FALSE(link.PortOpen()) << "stopped before the check";
    EXPECT_NE(run.Quality().find("Electrode 1: slope -59.0 mV/pH, 99.7 %"), std::string::npos) << run.Quality();
    Buffer("10", "+9999\t+9999\t-1700\t+7996");
    EXPECT_EQ(state.PhCaption, "Electrode 2");
    EXPECT_EQ(Kept(), ".CLI 7 0, 4 177, / ; ");
    Buffer("7", "+9999\t+9999\t+0050\t+7458");
    EXPECT_EQ(Kept(), ".CLI 7 0, 4 177, / 10 -170, 7 5, ; ");
    Buffer("4", "+9999\t+9999\t+1800\t+7458");
    EXPECT_FALSE(run.NextBuffer());
    EXPECT_EQ(Kept(), ".CLI 7 0, 4 177, / 10 -170, 7 5, 4 180, ; ") << "until the question is answered";
    prompts.ExpectAskToSave(SaveQuestion, true);
    files.Expect(folder / "new");
    EXPECT_EQ(run.Finish(), PhCalibrationRun::End::Used);
    EXPECT_EQ(Joined(InForce(1), InForce(2), Kept(), state.BufferCount[0], state.PhCaliUnsaved),
              "2|24/11/2026 09:05|25|PH-1|7 0, 4 177, |3|24/11/2026 09:30|20|PH-2|10 -170, 7 5, 4 180, ||5|0");
    EXPECT_EQ(ReadSetting("Latest Calibration Value", "LastCaliFile", state.IniPath), folder / "NEW.CLI");
    AppState again;
    ReadPh(again, folder.Get("NEW.CLI"));
    EXPECT_EQ(again.Buffers2, state.Buffers2);
}

TEST_F(PhCalibrationRunTest, WhateverIsLeftBringsTheLastOneBackComplete) {
    const std::string before = InForce(1);
    ASSERT_EQ(before, "2|01/01/2026 00:00|20|OLD|4 170, 7 3, ");
    const std::pair<const char*, std::function<void()>> roads[] = {
        {"cancelled at once", [&] { run.Begin(2, 2), Cancel(); }},
        {"cancelled at the last buffer", [&] { run.Begin(2, 0), Buffer("7", "+0000\t+7458\t+0000\t+7458"), Cancel(); }},
        {"cancelled in electrode 2", [&] { run.Begin(2, 2), TwoBuffers("4"), Cancel(); }},
        {"equal pH",
         [&] {
             run.Begin(2, 2), TwoBuffers("7");
             EXPECT_EQ(Joined(prompts.messages), "Bad calibration data, please re-do the calibration");
         }},
        {"not to be saved", [&] { run.Begin(0, 2), TwoBuffers("4"), prompts.ExpectAskToSave(SaveQuestion, false); }},
    };
    for (const auto& [name, road] : roads) {
        SCOPED_TRACE(name);
        prompts.messages.clear();
        road();
        EXPECT_FALSE(run.NextBuffer());
        const auto end = run.Finish();
        EXPECT_TRUE(end == PhCalibrationRun::End::Left || end == PhCalibrationRun::End::Declined);
        EXPECT_TRUE(prompts.Done());
        EXPECT_EQ(Joined(InForce(1), InForce(2), link.PortOpen(), state.PhCancelled, state.StatusMessage),
                  before + "|0||0|||0|0|The last calibration is in use again.");
    }
}

TEST_F(PhCalibrationRunTest, ACalibrationThatNoFileHoldsIsNotLost) {
    run.Begin(2, 0);
    TwoBuffers("4");
    prompts.ExpectAskToSave(SaveQuestion, true);
    files.Expect("/nonexistent/x.cli");
    EXPECT_EQ(run.Finish(), PhCalibrationRun::End::UsedUnsaved);
    for (const char* part : {"could not be saved", "slope -59.0"})
        EXPECT_NE(state.StatusMessage.find(part), std::string::npos) << state.StatusMessage;
    const std::string unsaved = InForce(1);
    run.Begin(2, 0);
    EXPECT_EQ(Kept(), ".CLI 7 0, 4 177, / ; ") << "the one before, while the next is taken";
    EXPECT_FALSE(state.PhCaliUnsaved) << "what is being filled is none yet";
    Cancel();
    EXPECT_EQ(Joined(Kept(), InForce(1), state.PhCaliUnsaved), Joined("", unsaved, 1))
        << "the file would bring an older one";
    LoadLastPhCalibration(state, prompts, files);
    EXPECT_FALSE(state.PhCaliUnsaved);
}

TEST_F(PhCalibrationRunTest, AnElectrodeThatIsNotCalibratedKeepsItsCalibration) {
    run.Begin(0, 2);
    Buffer("7", "+0000\t+7458\t+0000\t+7458");
    EXPECT_EQ(Kept(), "");
    Buffer("4", "+1770\t+7458\t+1770\t+7458");
    EXPECT_EQ(Kept(), ".CLI 4 170, 7 3, / 7 0, 4 177, ; ") << "a sudden end drops neither";
    prompts.ExpectAskToSave(SaveQuestion, true);
    files.Expect(folder / "new");
    run.Finish();
    EXPECT_NE(state.StatusMessage.find("Electrode 1 keeps its calibration of 01/01/2026 00:00."), std::string::npos);
    AppState again;
    ReadPh(again, folder.Get("NEW.CLI"));
    EXPECT_EQ(Joined(Buffers(again, 1), again.PhCaliElectrode, state.FileElectrodeNum),
              "4 170, 7 3, |,OLD,PH-2|,OLD,PH-2")
        << "the number is that of the electrode that was calibrated";
}

class BufferFormTest : public PhCalibrationRunTest {
 protected:
    std::string Boxes() const { return form.Text(1) + "|" + form.Text(2) + "|" + form.Text(3); }
    void Open(const char* caption) {
        state.PhCaption = caption;
        state.PhElectrode = caption[10] - '0';
        state.BufferCount = {2, 1, 1};
        link.StartLink();
        form.Load();
    }
};

TEST_F(BufferFormTest, EachElectrodeReadsItsOwnInputs) {
    const std::tuple<const char*, const char*, const char*, std::int16_t, const char*, const char*> rows[] = {
        {"electrode 1 and its sensor", "Electrode 1", "10111", 2, ".0||", "177.0|25.0|77.0"},
        {"electrode 2 and its sensor", "Electrode 2", "10111", 2, ".0||", "-.5|30.0|86.0"},
        {"electrode 2 follows the only sensor", "Electrode 2", "10110", 1, ".0||", "-.5|25.0|77.0"},
        {"electrode 1 without", "Electrode 1", "10011", 2, ".0|21.0|69.8", "177.0|21.0|69.8"},
        {"the only sensor is off", "Electrode 2", "10010", 1, ".0|22.0|71.6", "-.5|22.0|71.6"},
        {"electrode 2 without", "Electrode 2", "10110", 2, ".0|22.0|71.6", "-.5|22.0|71.6"},
    };
    for (const auto& [name, caption, channels, sensors, opened, read] : rows) {
        SCOPED_TRACE(name);
        SetChannels(channels);
        state.SensorCount = sensors;
        Open(caption);
        form.Tick();
        EXPECT_EQ(Joined(form.Ok(), Boxes(), form.Worth().IsLive()), Joined(0, opened, 0)) << "OK waits for a frame";
        EXPECT_EQ(form.Remark().find("OK waits for the first reading"), 0u);
        for (int i = 0; i < 20; ++i)
            Second("+1770\t+7458\t-0005\t+6887");
        EXPECT_EQ(Joined(Boxes(), ReadingNote(form.Worth())), Joined(read, "steady"));
        EXPECT_EQ(form.At(BufferForm::Celsius).readOnly, !form.TypedTemperature());
    }
}

TEST_F(BufferFormTest, TypedTemperaturesFillEachOther) {
    state.Channel[2] = 0;
    Open("Electrode 1");
    form.Edited(BufferForm::Celsius, "30");
    form.Enter(BufferForm::Celsius);
    EXPECT_EQ(form.Text(BufferForm::Fahrenheit), "86.0");
    form.Edited(BufferForm::Fahrenheit, "50");
    form.Enter(BufferForm::Fahrenheit);
    EXPECT_EQ(form.Text(BufferForm::Celsius), "10.0");
    Second("+1770\t+7458\t-0005\t+6887");
    EXPECT_EQ(Boxes(), "177.0|10.0|50") << "no tick writes over it";
    const std::function<void()> steps[] = {[&] { form.Enter(BufferForm::Celsius); }, [&] { EXPECT_FALSE(form.Ok()); },
                                           [&] { form.Left(BufferForm::Celsius); }};
    for (const auto& step : steps) {
        form.Edited(BufferForm::Celsius, "1E39");
        step();
        EXPECT_EQ(Boxes(), "177.0|10.0|50") << "the value before";
    }
    EXPECT_EQ(Joined(prompts.messages), "Data out of range, please try again.,Data out of range, please try again.");
    EXPECT_NE(form.Remark().find("10.0 °C stands"), std::string::npos) << "no box when the dialog goes";
    state.Temperature[1] = "1E39";
    Open("Electrode 1");
    Second("+1770\t+7458\t-0005\t+6887");
    EXPECT_EQ(Joined(Boxes(), form.Ok(), form.TakeFocus()), Joined("177.0|1E39|", 0, BufferForm::Celsius));
}

TEST_F(BufferFormTest, SaysHowAnOddPhCounts) {
    Open("Electrode 1");
    Second("+1770\t+7458\t-0005\t+6887");
    const char* const outside = "The pH of a buffer lies between 0 and 14.";
    const std::pair<const char*, const char*> rows[] = {{"7.00", ""},
                                                        {" +7 ", ""},
                                                        {"", "No pH is typed: it counts as 0."},
                                                        {"seven", "\"seven\" counts as pH 0."},
                                                        {"7,5", "\"7,5\" counts as pH 7."},
                                                        {"-1", outside},
                                                        {"15", outside}};
    for (const auto& [typed, remark] : rows) {
        form.Edited(BufferForm::Ph, typed);
        EXPECT_EQ(form.Remark(), remark) << typed;
    }
    form.Edited(BufferForm::Ph, "1e39");
    EXPECT_FALSE(form.Ok());
    EXPECT_EQ(Joined(prompts.messages, state.BufferCount[0]), "Data out of range, please try again.|2");
    form.Edited(BufferForm::Ph, "seven");
    EXPECT_TRUE(form.Ok());
    EXPECT_EQ(state.BufferCount[0], 1) << "one buffer less to do";
    Second("+1790\t+7458\t-0005\t+6887");
    EXPECT_EQ(form.Text(BufferForm::Mv), "177.0") << "no tick after OK";
}

TEST_F(BufferFormTest, ASilentInterfaceAndALostSensorAreTold) {
    Open("Electrode 1");
    for (const auto& [sensor, fault] :
         {std::pair{"+9999", "sensor 1 does not work"}, {"+0000", "sensor 1 tells 110.9 °C"}}) {
        Second(std::string("+1770\t") + sensor + "\t-0005\t+6887");
        EXPECT_NE(form.Remark().find(fault), std::string::npos) << form.Remark();
    }
    for (int second = 0; second < 5; ++second) {
        Poll();
        form.Tick();
    }
    EXPECT_EQ(form.Worth().kind, ReadingState::Kind::Stale);
    EXPECT_EQ(form.Text(BufferForm::Mv), "177.0") << "the last value stands";
}

}  // namespace
}  // namespace kelvo::test
