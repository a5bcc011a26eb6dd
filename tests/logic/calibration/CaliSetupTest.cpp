#include "calibration/CaliSetup.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// A dialog filled in as far as "Ok" asks for.
struct Dialog {
    explicit Dialog(const std::string& settings = "") {
        state.IniPath = folder.Put("KELVO.ini", settings);
        state.IonIndex = Fluoride;
        state.ASD = 2;
        setup.mvIndex = 2;
        setup.logCIndex = 1;
        setup.ionIndex = 3;
        setup.txtspin = "4";
        setup.ticked = {true, false, false};
    }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    CaliSetup setup{state, prompts};
};

TEST(CaliSetup, LoadsTheLastChoices) {
    const char* const rows[][2] = {
        // lines of the file; mV scale, LogC scale, points, ion
        {"mV=5\r\nLogC=3\r\nCaliPtr=4", "5|3|4|10"},
        {"", "0|0||10"},                                                          // Val of an empty text
        {"mV=6\r\nLogC=-1\r\nCaliPtr=12\r\nIon=5\r\nDataMode=0", "-1|-1|12|10"},  // ion and mode have no reader
    };
    for (const auto& [lines, choices] : rows)
        for (const bool onLine : {true, false}) {
            Dialog d(std::string("[Setting]\r\n") + lines);
            d.setup.Load(onLine);
            EXPECT_EQ(Joined(d.setup.mvIndex, d.setup.logCIndex, d.setup.txtspin, d.setup.ionIndex), choices) << lines;
            EXPECT_EQ(Joined(d.setup.ticked), onLine ? "0,1,0" : "1,0,0") << lines;
        }
}

TEST(CaliSetup, NumberOfPointsAndInputModes) {
    Dialog d;
    const auto after = [&](void (CaliSetup::*step)(), const char* typed) {
        d.setup.txtspin = typed;
        (d.setup.*step)();
        return d.setup.txtspin;
    };
    EXPECT_EQ(Joined(after(&CaliSetup::SpinUp, "9"), after(&CaliSetup::SpinUp, "10")), "10|10");
    EXPECT_EQ(Joined(after(&CaliSetup::SpinDown, "2"), after(&CaliSetup::SpinDown, "1")), "1|1");
    EXPECT_EQ(Joined(after(&CaliSetup::SpinEnter, "1"), after(&CaliSetup::SpinEnter, "11")), "2|10");
    d.setup.Tick(CaliSetup::StabilityWatch, true);
    d.setup.Tick(CaliSetup::OnLine, true);
    EXPECT_EQ(Joined(d.setup.ticked), "0,1,1");
    d.setup.Tick(CaliSetup::Keyboard, true);
    EXPECT_EQ(Joined(d.setup.ticked), "1,0,1");
}

TEST(CaliSetup, OkRefusesInOrder) {
    const std::string number = "Wrong data type, please re-enter an integer (2 to 10)";
    const std::string ion = "Setup is incomplete, please select an ion and other options";
    const std::string scale = "Setup is incomplete, please select the scale(s) and other options";
    const std::string mode = "Setup is incomplete, please select 'Keyboard Input or On line Reading' and other options";
    const std::tuple<int, int, int, bool, const char*, std::string> rows[] = {
        {-1, 1, NoIon, false, "", scale}, {2, -1, NoIon, false, "", scale}, {2, 1, NoIon, false, "", ion},
        {2, 1, 3, false, "", mode},       {2, 1, 3, true, "0", number},     {2, 1, 3, true, "11", number},
        {2, 1, 3, true, "2.5", number},
    };
    for (const auto& [mv, logC, ionIndex, keyboard, points, message] : rows) {
        Dialog d("[Setting]\r\nmV=0\r\n");
        d.setup.mvIndex = mv;
        d.setup.logCIndex = logC;
        d.setup.ionIndex = ionIndex;
        d.setup.ticked = {keyboard, false, true};
        d.setup.txtspin = points;
        d.prompts.ExpectMessage(message);
        EXPECT_FALSE(d.setup.Accept());
        EXPECT_EQ(Joined(d.state.CaliDirty, d.state.ASD, d.state.IonIndex, d.folder.Get("KELVO.ini")),
                  "0|2|10|[Setting]\r\nmV=0\r\n");
    }
}

TEST(CaliSetup, OkWritesTheChoices) {
    Dialog d("[Hareware]\r\nASD= 2\r\n[Setting]\r\n");
    d.setup.txtspin = " 1 ";
    d.state.PointTemp = "20";
    ASSERT_TRUE(d.setup.Accept());
    EXPECT_EQ(d.folder.Get("KELVO.ini"),
              "[Hareware]\r\nASD=-1\r\n[Setting]\r\nLogC=1\r\nmV=2\r\nIon=3\r\nCaliPtr=1\r\nDataMode=0\r\n");
    EXPECT_EQ(Joined(d.state.ASD, d.state.CaliDirty, d.state.IonIndex, d.state.PointTemp, d.state.OnLine), "-1|1|3||0");
    d.state.ASD = 2;
    d.setup.ticked = {false, true, true};
    ASSERT_TRUE(d.setup.Accept());
    EXPECT_EQ(Joined(d.state.ASD, d.state.OnLine), "2|1") << "ticked: the mode stays";
}

TEST(CaliSetup, EntryOfPointsAndItsEndings) {
    Dialog d;
    d.setup.BeginEntry();
    d.setup.BeginPoint(3);
    EXPECT_EQ(Joined(d.state.CurrentPoint, d.state.PointTitle, d.state.PointPrompt),
              "3|CALIBRATION|Calibration point 3:  type in calibration data in the boxes below, press 'Enter', then "
              "click on 'OK'.");
    d.state.PointTemp = "24.5";
    d.state.CaliDirty = d.state.DateFormat = 1;
    d.setup.Complete(FixedClock());
    EXPECT_EQ(Joined(d.state.CaliDate, d.state.FileDate, d.state.FileTemp, d.state.CaliDirty),
              "11/24/2026 09:05|11/24/2026 09:05|24.5|1");
    d.setup.Abandon();
    EXPECT_EQ(Joined(d.state.CaliDirty, d.state.CaliPoints, d.state.Graph.Empty()), "0|0|1") << "half is none";
}

}  // namespace
}  // namespace kelvo::test
