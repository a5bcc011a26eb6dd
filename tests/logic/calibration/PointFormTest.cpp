#include "calibration/PointForm.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

constexpr int Potential = PointForm::Potential, Ppm = PointForm::Ppm, Molar = PointForm::Molar, LogC = PointForm::LogC,
              Celsius = PointForm::Celsius, Fahrenheit = PointForm::Fahrenheit, Ok = PointForm::OkButton;
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
        form.Begin();
        form.TakeFocus();
    }
    void Type(const std::array<std::string, 4>& texts) {
        for (int i = 0; i < 4; ++i)
            form.Edited(i, texts[static_cast<std::size_t>(i)]);
    }
    std::string Boxes(int first, int last) const {
        return form.Text(first) + (first == last ? "" : "|" + Boxes(first + 1, last));
    }
    AppState state;
    ScriptedPrompts prompts;
    PointForm form{state, prompts};
};

TEST(PointForm, AConcentrationFillsTheOtherUnits) {
    // the box and what is typed, ppm|mol/L|LogC, the next box, the message
    const std::tuple<const char*, int, std::array<std::string, 4>, const char*, int, std::string> rows[] = {
        {"LogC comes from the rounded mol/L", Ppm, {"", "1000"}, "1000|5.26E-02|-1.2790", Celsius, ""},
        {"mol/L, LogC as Str", Molar, {"", "", "0.01"}, "190.0|0.01|-2", Celsius, ""},
        {"LogC of 0 with its blank", Molar, {"", "", "1"}, "18998.4|1| 0", Celsius, ""},
        {"ppm comes from the rounded mol/L", LogC, {"", "", "", "-1.5"}, "600.3|3.16E-02|-1.5", Celsius, ""},
        {"below 1 ppm no digit stands before the dot", LogC, {"", "", "", "-5"}, ".2|1.00E-05|-5", Celsius, ""},
        {"0 ppm fills nothing", Ppm, {"", "0"}, "0||", Molar, ""},
        {"all empty", LogC, {"30"}, "||", Ppm, Incomplete},
        {"a negative concentration has no LogC", Ppm, {"", "-5"}, "-5||", Ppm, OutOfRange},
        {"beyond a double", LogC, {"", "", "", "400"}, "||400", LogC, OutOfRange},
    };
    for (const auto& [name, box, typed, filled, focus, message] : rows) {
        Dialog d;
        d.Type(typed);
        if (!message.empty()) d.prompts.ExpectMessage(message);
        d.form.Enter(box);
        EXPECT_TRUE(d.form.At(focus).nextField) << name;
        EXPECT_EQ(Joined(d.Boxes(Ppm, LogC), d.form.TakeFocus()), Joined(filled, focus)) << name;
        EXPECT_EQ(d.prompts.lastTitle, message == Incomplete ? "Data Input" : "") << name;
    }
}

TEST(PointForm, WhereEnterLeadsByPointAndMode) {
    for (const bool onLine : {false, true})
        for (const int point : {1, 2}) {
            Dialog d(point, onLine);
            for (const char* logC : {"-3", "0"}) {
                d.form.Edited(LogC, logC);
                d.form.Enter(LogC);
                EXPECT_EQ(d.form.TakeFocus(), point == 1 ? Celsius : Ok);
                EXPECT_EQ(d.form.TakeMeasurementStart(), onLine && *logC == '-') << "LogC 0 starts none";
                EXPECT_FALSE(d.form.TakeMeasurementStart()) << "taken once";
            }
        }
}

TEST(PointForm, BeginOffersTheTemperatureOnce) {
    // point, on line, sensor, temperature; °C and °F, both shown, the hint, the potential shown, the focus
    const std::tuple<int, bool, std::int16_t, const char*, const char*> rows[] = {
        {1, false, 1, "25", "25|77.0|1|1|1|0"},
        {1, true, 0, "24.96", "24.96|76.9|1|1|0|1"},
        {1, true, 1, "25", "||1|0|0|1"},
        {2, false, 0, "25", "25|77.0|0|0|1|0"},
        {1, false, 0, "", "|32.0|1|1|1|0"}};
    for (const auto& [point, onLine, sensor, caliTemp, begun] : rows) {
        Dialog d(point, onLine);
        d.Type({"1", "2", "3", "4"});
        d.state.Channel[2] = sensor;
        d.state.CaliTemp = caliTemp;
        d.form.Begin();
        EXPECT_EQ(d.Boxes(Potential, LogC), "|||");
        EXPECT_EQ(Joined(d.Boxes(Celsius, Fahrenheit), d.form.TemperatureShown(), d.form.DefaultHintShown(),
                         d.form.At(Potential).visible, d.form.TakeFocus()),
                  begun);
    }
}

TEST(PointForm, OkStoresThePoint) {
    Dialog d;
    d.Type({"-54.5", "1000", "5.26E-02", "-1.2790"});
    d.form.Edited(Fahrenheit, "76");
    d.form.Enter(Fahrenheit);
    EXPECT_EQ(d.form.TakeFocus(), Ok);
    d.form.Edited(Celsius, "1E39");
    for (const bool byEnter : {true, false}) {
        d.prompts.ExpectMessage(OutOfRange);
        EXPECT_FALSE(byEnter ? (d.form.Enter(Celsius), false) : d.form.Ok());
        EXPECT_EQ(Joined(d.Boxes(Celsius, Fahrenheit), d.form.TakeFocus()), Joined("24.4|76", Celsius));
        d.form.Edited(Celsius, std::string(45, '5'));
    }
    d.form.Edited(Celsius, "24.4");
    d.state.PointRunning = 1;
    ASSERT_TRUE(d.form.Ok());
    d.state.CurrentPoint = 2;
    d.Type({"1E4", "1", "0.5", "-0.3"});
    d.form.Edited(Celsius, "30");
    ASSERT_TRUE(d.form.Ok()) << "potentials have no limit here";
    EXPECT_EQ(Joined(d.state.CaliE, d.state.CaliPpm, d.state.CaliMolar, d.state.CaliLogC, d.state.PointTemp,
                     d.state.PointRunning),
              "0,-54.5,10000|0,1000,1|0,0.0526,0.5|0,-1.279,-0.3|24.4|0")
        << "the temperature stays as set at point 1";
}

TEST(PointForm, OkHelpsToCompleteAndNeverStoresHalfAPoint) {
    const std::tuple<std::array<std::string, 4>, const char*, const char*> rows[] = {
        // typed, boxes and focus, message
        {{"30", "", "", ""}, "30||||1", Incomplete},
        {{"30", "1000", "", ""}, "30|1000|5.26E-02|-1.2790|4", nullptr},
        {{"30", "", "0.01", "5"}, "30|190.0|0.01|-2|4", nullptr},  // the first box that holds text leads
        {{"", "1000", "", ""}, "|1000|5.26E-02|-1.2790|0", nullptr},
        {{"30", "0", "", ""}, "30|0|||2", nullptr},
        {{"1E39", "1", "2", "3"}, "1E39|1|2|3|0", OutOfRange}};
    for (const auto& [typed, result, message] : rows) {
        Dialog d;
        d.Type(typed);
        if (message) d.prompts.ExpectMessage(message);
        EXPECT_FALSE(d.form.Ok()) << result;
        EXPECT_EQ(Joined(d.Boxes(Potential, LogC), d.form.TakeFocus()), result);
        EXPECT_EQ(Joined(d.state.CaliPpm, d.prompts.lastTitle), "0,0,0|");
    }
}

}  // namespace
}  // namespace kelvo::test
