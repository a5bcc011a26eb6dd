#include "calibration/CaliSetup.h"

#include <functional>

#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

const char* const NoInteger = "Wrong data type, please re-enter an integer (2 to 10)";

struct Dialog {
    explicit Dialog(const std::string& settings = "") {
        state.IniPath = folder.Put("KELVO.ini", settings);
        state.IonIndex = Fluoride;
    }
    /// A dialog filled in as far as "Ok" asks for.
    static void Fill(CaliSetup& setup) {
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
        // lines of the file; mV scale, LogC scale, points
        {"mV=5\r\nLogC=3\r\nCaliPtr=4", "5|3|4"},
        {"", "0|0|"},  // Val of an empty text
        {"mV=6\r\nLogC=4\r\nCaliPtr=12", "-1|-1|12"},
        {"mV=-1\r\nLogC=-1", "-1|-1|"},
        {"Ion=5\r\nDataMode=0", "0|0|"},  // written for no reader
    };
    for (const auto& [lines, choices] : rows)
        for (const bool onLine : {true, false}) {
            Dialog d(std::string("[Setting]\r\n") + lines);
            d.setup.Load(onLine);
            EXPECT_EQ(Joined(d.setup.mvIndex, d.setup.logCIndex, d.setup.txtspin), choices) << lines;
            EXPECT_EQ(Joined(d.setup.ionIndex, d.setup.ticked), onLine ? "10|0,1,0" : "10|1,0,0") << lines;
        }
}

TEST(CaliSetup, NumberOfPoints) {
    const char* const rows[][4] = {
        // typed; after up, down, Enter
        {"4", "5", "3", "4"},    {"1", "2", "1", "2"},  {"2", "3", "1", "2"},
        {"10", "10", "9", "10"}, {"9", "10", "8", "9"}, {"11", "10", "10", "10"},
        {"", "1", "1", "2"},     {"x", "1", "1", "2"},  {"0", "1", "1", "2"},
    };
    void (CaliSetup::*const steps[])() = {nullptr, &CaliSetup::SpinUp, &CaliSetup::SpinDown, &CaliSetup::SpinEnter};
    Dialog d;
    for (const auto& row : rows)
        for (std::size_t i = 1; i < 4; ++i) {
            d.setup.txtspin = row[0];
            (d.setup.*steps[i])();
            EXPECT_EQ(d.setup.txtspin, row[i]) << row[0];
        }
    for (char32_t key = 32; key < 256; ++key)
        EXPECT_EQ(CaliSetup::SpinKeyAllowed(key), key >= 49 && key <= 56) << static_cast<int>(key);
    d.prompts.ExpectMessage(NoInteger);
    d.setup.SpinKeyRefused();
}

TEST(CaliSetup, InputModesExcludeEachOther) {
    const std::tuple<int, bool, const char*> steps[] = {{1, true, "0,1,0"},  {2, true, "0,1,1"}, {0, true, "1,0,1"},
                                                        {2, false, "1,0,0"}, {2, true, "1,0,1"}, {0, false, "0,0,1"}};
    Dialog d;
    for (const auto& [box, on, ticked] : steps) {
        d.setup.Tick(box, on);
        EXPECT_EQ(Joined(d.setup.ticked), ticked) << box;
    }
}

TEST(CaliSetup, OkRefusesInOrder) {
    const std::string ion = "Setup is incomplete, please select an ion and other options";
    const std::string scale = "Setup is incomplete, please select the scale(s) and other options";
    const std::string mode = "Setup is incomplete, please select 'Keyboard Input or On line Reading' and other options";
    struct Row {
        const char* name;
        int mv, logC, ion;
        std::array<bool, 3> ticked;
        const char* points;
        std::string message;
    };
    const Row rows[] = {
        {"no mV scale", -1, 1, 3, {true}, "4", scale},
        {"no LogC scale", 2, -1, 3, {true}, "4", scale},
        {"no ion", 2, 1, NoIon, {true}, "4", ion},
        {"no mode", 2, 1, 3, {false, false, true}, "4", mode},
        {"nothing at all: the scale comes first", -1, 1, NoIon, {}, "", scale},
        {"neither ion nor mode", 2, 1, NoIon, {}, "", ion},
        {"no number", 2, 1, 3, {true}, "", NoInteger},
        {"no points", 2, 1, 3, {true}, "0", NoInteger},
        {"too many", 2, 1, 3, {true}, "11", NoInteger},
        {"half a point", 2, 1, 3, {true}, "2.5", NoInteger},
        {"far too many", 2, 1, 3, {true}, "1E300", NoInteger},
    };
    for (const Row& row : rows) {
        Dialog d("[Setting]\r\nmV=0\r\n");
        d.setup.mvIndex = row.mv;
        d.setup.logCIndex = row.logC;
        d.setup.ionIndex = row.ion;
        d.setup.ticked = row.ticked;
        d.setup.txtspin = row.points;
        d.state.ASD = 2;
        d.prompts.ExpectMessage(row.message);
        EXPECT_FALSE(d.setup.Accept()) << row.name;
        EXPECT_EQ(Joined(d.state.CaliDirty, d.state.ASD, d.state.IonIndex, d.folder.Get("KELVO.ini")),
                  "0|2|10|[Setting]\r\nmV=0\r\n")
            << row.name;
    }
}

TEST(CaliSetup, OkWritesTheChoices) {
    Dialog d("[Hareware]\r\nASD= 2\r\n[Setting]\r\n");
    Dialog::Fill(d.setup);
    d.setup.txtspin = " 1 ";
    d.state.ASD = 2;
    d.state.PointTemp = "20";
    d.state.SensorWarned = d.state.OnLine = true;
    ASSERT_TRUE(d.setup.Accept());
    EXPECT_EQ(d.folder.Get("KELVO.ini"),
              "[Hareware]\r\nASD=-1\r\n[Setting]\r\nLogC=1\r\nmV=2\r\nIon=3\r\nCaliPtr=1\r\nDataMode=0\r\n");
    EXPECT_EQ(d.state.ASD, -1) << "not ticked: no watch";
    EXPECT_EQ(Joined(d.state.CaliDirty, d.state.IonIndex, d.state.PointTemp, d.state.Cancelled, d.state.ReadingActive,
                     d.state.SensorWarned, d.state.OnLine),
              "1|3||1|1|0|0");

    d.state.ASD = 2;
    d.setup.ticked = {false, true, true};
    ASSERT_TRUE(d.setup.Accept());
    EXPECT_EQ(Joined(d.state.ASD, d.state.OnLine), "2|1") << "ticked: the mode stays";
    EXPECT_EQ(d.folder.Get("KELVO.ini"),
              "[Hareware]\r\nASD=2\r\n[Setting]\r\nLogC=1\r\nmV=2\r\nIon=3\r\nCaliPtr=1\r\nDataMode=1\r\n");
}

TEST(CaliSetup, EntryOfPoints) {
    Dialog d;
    Dialog::Fill(d.setup);
    SetPoints(d.state, {{-2, 5}, {-1, 60}});
    d.state.LinearFit = 1;
    d.setup.BeginEntry();
    EXPECT_EQ(Joined(d.state.MvScaleIndex, d.state.LogCScaleIndex, d.state.CaliPoints, d.state.CaliE,
                     d.state.Graph.Empty(), d.state.LinearFit),
              "2|1|4|0,0,0,0,0|0|0");

    d.setup.BeginPoint(3);
    EXPECT_EQ(Joined(d.state.CurrentPoint, d.state.PointTitle, d.state.PointPrompt),
              "3|CALIBRATION|Calibration point 3:  type in calibration data in the boxes below, press 'Enter', then "
              "click on 'OK'.");
    d.state.OnLine = true;
    d.setup.BeginPoint(10);
    EXPECT_EQ(
        Joined(d.state.CurrentPoint, d.state.PointTitle, d.state.PointPrompt),
        "10|On Line Data Reading ...|Reading 10:  type in the concentration (ppm, mol/L or Log), then immerse the "
        "electrode in the solution and press 'Enter' to start the measurement.");
}

TEST(CaliSetup, Endings) {
    Dialog d;
    const FixedClock clock;
    d.state.PointTemp = "24.5";
    d.state.CaliDirty = 1;
    d.setup.Complete(clock);
    EXPECT_EQ(Joined(d.state.CaliDate, d.state.FileDate, d.state.FileTemp, d.state.CaliDirty),
              "24/11/2026 09:05|24/11/2026 09:05|24.5|1");
    d.state.DateFormat = 1;
    d.setup.Complete(clock);
    EXPECT_EQ(d.state.CaliDate, "11/24/2026 09:05");

    d.state.IsePath = {1, 1, 1};
    d.state.PhPath[3] = 1;
    d.setup.Cancel();
    EXPECT_EQ(Joined(d.state.IsePath, d.state.PhPath, d.state.Cancelled), "0,0,0|0,0,0,0,0|1");

    SetPoints(d.state, {{-2, 5}, {-1, 60}});
    d.state.Graph.Dot(500, 500, colour::Black);
    d.setup.Abandon();
    EXPECT_EQ(Joined(d.state.CaliDirty, d.state.CaliPoints, d.state.Graph.Empty()), "0|0|1") << "half is none";
}

}  // namespace
}  // namespace kelvo::test
