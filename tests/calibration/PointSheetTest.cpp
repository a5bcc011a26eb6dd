#include "calibration/PointSheet.h"

#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

constexpr int Potential = PointSheet::Potential, Ppm = PointSheet::Ppm, Molar = PointSheet::Molar,
              LogC = PointSheet::LogC, Celsius = PointSheet::Celsius, Fahrenheit = PointSheet::Fahrenheit,
              Ok = PointSheet::OkButton;
const char* const Incomplete = "Incomplete data input, please check.";
const char* const OutOfRange = "Data out of range, please try again.";

struct Dialog {
    explicit Dialog(int point = 1, bool onLine = false) {
        state.IonIndex = Fluoride;
        state.CaliPoints = 2;
        state.CaliE = state.CaliPpm = state.CaliMolar = state.CaliLogC = {0, 0, 0};
        state.CurrentPoint = static_cast<std::int16_t>(point);
        state.OnLine = onLine;
        state.CaliTemp = "25";
        state.ReadingActive = true;
        sheet.Begin();
        sheet.TakeFocus();
    }
    void Type(const std::array<std::string, 4>& texts) {
        for (int i = 0; i < 4; ++i)
            sheet.Edited(i, texts[static_cast<std::size_t>(i)]);
    }
    std::string Boxes(int first, int last) const {
        std::string all = sheet.Text(first);
        for (int i = first + 1; i <= last; ++i)
            all += "|" + sheet.Text(i);
        return all;
    }
    /// The yellow boxes, "" when there is none.
    std::string Lead() const {
        std::string lead;
        for (int i = 0; i < sheet.Size(); ++i)
            if (sheet.At(i).lead) lead += static_cast<char>('0' + i);
        return lead;
    }
    AppState state;
    ScriptedPrompts prompts;
    PointSheet sheet{state, prompts};
};

TEST(PointSheet, AConcentrationFillsTheOtherUnits) {
    struct Row {
        const char* name;
        int box;
        std::array<std::string, 4> typed;
        const char* filled;  ///< ppm|mol/L|LogC
        int focus;
        const char* message = nullptr;
        const char* title = "";
    };
    const Row rows[] = {
        {"LogC comes from the rounded mol/L", Ppm, {"", "1000"}, "1000|5.26E-02|-1.2790", Celsius},
        {"1 ppm", Ppm, {"", "1"}, "1|5.26E-05|-4.2790", Celsius},
        {"what stood there is replaced", Ppm, {"", "10", "1", "0"}, "10|5.26E-04|-3.2790", Celsius},
        {"mol/L, LogC as Str", Molar, {"", "", "0.01"}, "190.0|0.01|-2", Celsius},
        {"LogC of 0 with its blank", Molar, {"", "", "1"}, "18998.4|1| 0", Celsius},
        {"ppm comes from the rounded mol/L", LogC, {"", "", "", "-1.5"}, "600.3|3.16E-02|-1.5", Celsius},
        {"below 1 ppm no digit stands before the dot", LogC, {"", "", "", "-5"}, ".2|1.00E-05|-5", Celsius},
        {"a bad exponent counts as none", LogC, {"", "", "", "-2E"}, "190.0|1.00E-02|-2E", Celsius},
        {"potential", Potential, {}, "||", Ppm},
        {"0 ppm fills nothing", Ppm, {"", "0"}, "0||", Molar},
        {"empty ppm moves on", Ppm, {"", ""}, "||", Molar},
        {"empty mol/L moves on", Molar, {"", "", ""}, "||", LogC},
        {"LogC of 0 fills nothing", LogC, {"", "", "", "0"}, "||0", Celsius},
        {"LogC alone empty", LogC, {"", "5"}, "5||", Celsius},
        {"all empty", LogC, {"30"}, "||", Ppm, Incomplete, "Data Input"},
        {"a negative concentration has no LogC", Ppm, {"", "-5"}, "-5||", Ppm, OutOfRange},
        {"beyond a double", LogC, {"", "", "", "400"}, "||400", LogC, OutOfRange},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.Type(row.typed);
        if (row.message) d.prompts.ExpectMessage(row.message);
        d.sheet.Enter(row.box);
        EXPECT_EQ(d.Boxes(Ppm, LogC), row.filled) << row.name;
        EXPECT_EQ(d.sheet.TakeFocus(), row.focus) << row.name;
        EXPECT_EQ(d.Lead(), std::to_string(row.focus)) << row.name;
        EXPECT_EQ(d.prompts.lastTitle, row.title) << row.name;
    }
    Dialog none;
    none.state.IonIndex = NoIon;
    none.sheet.Edited(Ppm, "5");
    none.prompts.ExpectMessage(OutOfRange);
    none.sheet.Enter(Ppm);
    EXPECT_EQ(none.Boxes(Ppm, LogC), "5||") << "without an ion nothing is filled by half";
}

TEST(PointSheet, WhereEnterLeadsByPointAndMode) {
    for (const bool onLine : {false, true})
        for (const int point : {1, 2}) {
            Dialog d(point, onLine);
            const int next = point == 1 ? Celsius : Ok;
            d.sheet.Edited(LogC, "-3");
            d.sheet.Enter(LogC);
            EXPECT_EQ(Joined(d.sheet.TakeFocus(), d.sheet.TakeMeasurementStart()), Joined(next, onLine)) << point;
            EXPECT_FALSE(d.sheet.TakeMeasurementStart()) << "taken once";
            EXPECT_EQ(d.Lead(), point == 1 ? "4" : "") << point;
            d.sheet.Edited(LogC, "0");
            d.sheet.Enter(LogC);
            EXPECT_EQ(Joined(d.sheet.TakeFocus(), d.sheet.TakeMeasurementStart()), Joined(next, false)) << point;
            d.sheet.Edited(Ppm, "-1");
            d.prompts.ExpectMessage(OutOfRange);
            d.sheet.Enter(Ppm);
            EXPECT_EQ(Joined(d.sheet.TakeFocus(), d.sheet.TakeMeasurementStart()), Joined(int{Ppm}, false)) << point;
        }
}

TEST(PointSheet, BeginOffersTheTemperatureOnce) {
    struct Row {
        const char* name;
        int point, onLine, sensor;
        const char* caliTemp;
        const char* begun;  ///< °C and °F, both shown, the hint, the potential shown, the lead
    };
    const Row rows[] = {
        {"typed", 1, false, 0, "25", "25|77.0|1|1|1|1|0"},
        {"typed beside a sensor", 1, false, 1, "25", "25|77.0|1|1|1|1|0"},
        {"on line without a sensor", 1, true, 0, "24.96", "24.96|76.9|1|1|1|0|1"},
        {"on line with a sensor", 1, true, 1, "25", "||1|1|0|0|1"},
        {"second point", 2, false, 0, "25", "25|77.0|0|0|0|1|0"},
        {"no working temperature", 1, false, 0, "", "|32.0|1|1|1|1|0"},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.Type({"1", "2", "3", "4"});
        d.state.CurrentPoint = static_cast<std::int16_t>(row.point);
        d.state.OnLine = row.onLine == 1;
        d.state.Channel[2] = static_cast<std::int16_t>(row.sensor);
        d.state.CaliTemp = row.caliTemp;
        d.sheet.Begin();
        EXPECT_EQ(d.Boxes(Potential, LogC), "|||") << row.name;
        EXPECT_EQ(Joined(d.Boxes(Celsius, Fahrenheit), d.sheet.TemperatureShown(), d.sheet.At(Fahrenheit).visible,
                         d.sheet.DefaultHintShown(), d.sheet.At(Potential).visible, d.Lead()),
                  row.begun)
            << row.name;
    }
}

TEST(PointSheet, Temperatures) {
    struct Row {
        int box;
        const char *text, *both;
        bool refused = false;
    };
    const Row rows[] = {{Celsius, "37", "37|98.6"},           {Celsius, "", "|32.0"},
                        {Fahrenheit, "98.6", "37.0|98.6"},    {Fahrenheit, "-40", "-40.0|-40"},
                        {Celsius, "1E39", "1E39|77.0", true}, {Fahrenheit, "-1E99", "25|-1E99", true}};
    for (const Row& row : rows) {
        Dialog d;
        d.sheet.Edited(row.box, row.text);
        if (row.refused) d.prompts.ExpectMessage(OutOfRange);
        d.sheet.Enter(row.box);
        EXPECT_EQ(d.Boxes(Celsius, Fahrenheit), row.both);
        EXPECT_EQ(d.sheet.TakeFocus(), row.refused ? row.box : Ok) << row.text;
    }
}

TEST(PointSheet, Keys) {
    Dialog d;
    for (char32_t key = 32; key < 256; ++key) {
        const bool number = (key >= 48 && key <= 57) || key == 45 || key == 46 || key == 69;
        for (int box = Potential; box <= Fahrenheit; ++box)
            EXPECT_EQ(d.sheet.KeyAllowed(box, key), number || (box == Molar && key > 57)) << static_cast<int>(key);
    }
    d.prompts.ExpectMessage("Invalid data type, please re-enter!");
    d.sheet.KeyRefused(Ppm);
}

TEST(PointSheet, OkStoresThePoint) {
    Dialog d;
    d.Type({"-54.5", "1000", "5.26E-02", "-1.2790"});
    d.sheet.Edited(Celsius, "24.5");
    d.state.PointRunning = 1;
    ASSERT_TRUE(d.sheet.Ok());
    EXPECT_EQ(Joined(d.state.PointTemp, d.state.PointRunning), "24.5|0");
    d.state.CurrentPoint = 2;
    d.Type({"1E4", "1", "0.5", "-0.3"});
    d.sheet.Edited(Celsius, "30");
    ASSERT_TRUE(d.sheet.Ok()) << "potentials have no limit here";
    EXPECT_EQ(d.state.PointTemp, "24.5") << "stays as set at point 1";
    EXPECT_EQ(Joined(d.state.CaliE, d.state.CaliPpm, d.state.CaliMolar, d.state.CaliLogC, d.state.ReadingActive),
              "0,-54.5,10000|0,1000,1|0,0.0526,0.5|0,-1.279,-0.3|1");
}

TEST(PointSheet, OkHelpsToComplete) {
    struct Row {
        const char* name;
        std::array<std::string, 4> typed;
        const char* boxes;
        int focus;
        const char* message = nullptr;
    };
    const Row rows[] = {
        {"only a potential", {"30", "", "", ""}, "30|||", Ppm, Incomplete},
        {"ppm is filled up", {"30", "1000", "", ""}, "30|1000|5.26E-02|-1.2790", Celsius},
        {"the first box that holds text leads", {"30", "", "0.01", "5"}, "30|190.0|0.01|-2", Celsius},
        {"LogC alone", {"30", "", "", "-2"}, "30|190.0|1.00E-02|-2", Celsius},
        {"no potential", {"", "1000", "5.26E-02", "-1.2790"}, "|1000|5.26E-02|-1.2790", Potential},
        {"0 ppm stays refused", {"30", "0", "", ""}, "30|0||", Molar},
        {"a potential beyond 32 bits", {"1E39", "1", "2", "3"}, "1E39|1|2|3", Potential, OutOfRange},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.Type(row.typed);
        if (row.message) d.prompts.ExpectMessage(row.message);
        EXPECT_FALSE(d.sheet.Ok()) << row.name;
        EXPECT_EQ(d.Boxes(Potential, LogC), row.boxes) << row.name;
        EXPECT_EQ(d.sheet.TakeFocus(), row.focus) << row.name;
        EXPECT_EQ(d.prompts.lastTitle, "") << row.name;
        EXPECT_EQ(d.state.CaliPpm, (std::vector<float>{0, 0, 0})) << row.name << ": nothing is stored by half";
    }
}

TEST(PointSheet, CancelEndsTheEntry) {
    Dialog d;
    d.Type({"30", "1000"});
    d.state.PointRunning = 1;
    d.sheet.Cancel();
    EXPECT_EQ(Joined(d.state.ReadingActive, d.state.PointRunning, d.Boxes(Potential, Fahrenheit)), "0|0||||||");
}

}  // namespace
}  // namespace kelvo::test
