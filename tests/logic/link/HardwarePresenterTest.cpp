#include "link/HardwarePresenter.h"

#include <functional>

#include "app/AppState.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using Ticks = std::array<std::int16_t, 5>;

struct Dialog {
    explicit Dialog(Ticks channel = {}) {
        state.IniPath = folder.Put("KELVO.ini", "[Hareware]\r\n");
        state.Channel = channel;
    }
    /// "+1 -3": switches box 1 on, then box 3 off.
    void Click(const std::string& steps) {
        for (std::size_t i = 0; i + 1 < steps.size(); i += 3)
            form.Click(steps[i + 1] - '0', steps[i] == '+');
    }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    HardwarePresenter form{state, prompts};
};

TEST(HardwarePresenter, TicksDecideWhatIsShown) {
    const struct {
        const char* name;
        Ticks channel;
        const char* steps;
        const char* seen;  ///< ticks | serial numbers | sensor 2 | ISE | temperatures 1, 2 and their labels
        std::int16_t sensors = 2;
    } rows[] = {
        {"nothing plugged in: the pH box", {}, "", "0,0,0,0,0|1,0,0|1|0|1,1,1"},
        {"sensors for their temperatures", {1, 0, 1, 1, 1}, "", "1,0,1,1,1|1,0,1|1|0|0,0,0"},
        {"ISE after pH 1", {1, 0, 0, 0, 0}, "+1", "0,1,0,0,0|0,1,0|0|1|1,0,1"},
        {"pH 1 after ISE", {0, 1, 0, 0, 0}, "+0", "1,0,0,0,0|1,0,0|1|0|1,1,1"},
        {"ISE on, beside pH 2", {1, 0, 0, 1, 0}, "+1", "0,1,0,1,0|0,1,1|1|1|1,1,1"},
        {"pH 2 off beside ISE", {0, 1, 0, 0, 0}, "+3 -3", "0,1,0,0,0|0,1,0|0|1|1,0,1"},
        {"pH 2 off beside pH 1", {1, 0, 0, 1, 0}, "-3", "1,0,0,0,0|1,0,0|1|0|1,1,1"},
        {"an ISE and its sensor", {0, 1, 1, 0, 0}, "", "0,1,1,0,0|0,1,0|0|1|0,0,0"},
        {"one sensor covers all", {1, 0, 1, 1, 1}, "", "1,0,1,1,0|1,0,1|0|0|0,0,0", 1},
    };
    for (const auto& row : rows) {
        Dialog d(row.channel);
        d.state.SensorCount = row.sensors;
        d.form.Load();
        d.Click(row.steps);
        const HardwarePresenter& f = d.form;
        EXPECT_EQ(Joined(f.checked, f.numberVisible, f.sensor2Visible && f.sensor2Enabled, f.iseVisible,
                         std::array{f.TemperatureVisible(1), f.TemperatureVisible(2), f.TemperatureLabelsVisible()}),
                  row.seen)
            << row.name;
    }
}

TEST(HardwarePresenter, Temperatures) {
    const std::tuple<std::size_t, const char*, const char*> rows[] = {
        {0, "37", "37,21,98.6,69.8,,"},   {1, "-40", "25,-40,77.0,-40.0,,"}, {2, "98.6", "37.0,21,98.6,69.8,,"},
        {3, "1E300", "25,,77.0,1E300,,"}, {1, "3E38", "25,3E38,77.0,,,"},    {0, "", ",21,,69.8,,"},
        {2, "", "25,21,,69.8,,"},
    };
    for (const auto& [box, typed, boxes] : rows) {
        Dialog d;
        d.state.Temperature = {"", "25", "21"};
        d.form.Load();
        d.form.txtC[box] = typed;
        d.form.ConvertTemperature(static_cast<int>(box));
        EXPECT_EQ(Joined(d.form.txtC), boxes) << typed;
    }
    Dialog d({1, 0, 1, 0, 0});
    d.state.Temperature = {"", "1E39", "21"};
    d.form.Load();
    EXPECT_EQ(Joined(d.form.txtC), "1E39,21,,69.8,,") << "what is behind a sensor is kept";
    d.form.txtC[1] = "30";
    d.Click("-2 +4 -4");
    EXPECT_EQ(Joined(d.form.txtC), "1E39,21,,69.8,,") << "the box without its sensor shows the stored value";
}

TEST(HardwarePresenter, Ion) {
    // The row stored, its name and weight.
    const std::pair<std::function<void(HardwarePresenter&)>, const char*> rows[] = {
        {[](HardwarePresenter& f) { f.SelectIon(0); }, "0|Ag|107.868"},
        {[](HardwarePresenter& f) { f.TypeIon("NO3"); }, "19|NO3|62.0049"},
        {[](HardwarePresenter& f) { f.TypeIon("no3"); }, "25|no3|6.94"},
        {[](HardwarePresenter& f) { f.TypeIon(" NO3 "); }, "19|NO3|62.0049"},
        {[](HardwarePresenter& f) { f.TypeIon(" Mg "); }, "25|Mg|6.94"},
        {[](HardwarePresenter& f) { f.SelectIon(25), f.CustomIonDone(); }, "25|Li|6.94"},
    };
    for (const auto& [choose, stored] : rows) {
        Dialog d({0, 1, 1, 0, 0});
        d.state.CustomIon = "Li";
        d.state.CustomWeight = 6.94f;
        d.form.Load();
        choose(d.form);
        ASSERT_TRUE(d.form.Back()) << stored;
        const auto ion = static_cast<std::size_t>(d.state.IonIndex);
        EXPECT_EQ(Joined(ion, d.state.Ions.names[ion], d.state.Ions.weights[ion]), stored);
    }
}

TEST(HardwarePresenter, BackChecksInOrder) {
    const char* const noElectrode = "Please select one electrode.";
    const char* const no1 = "You need to select the temperature channel or input a default for the electrode 1";
    const char* const no2 = "You need to select the temperature channel or input a default for the electrode 2";
    const char* const noIon = "You need to select an detected ion for the ISE measurement";
    const std::tuple<const char*, const char*, const char*, int, const char*> rows[] = {
        {"+2 +4", "25", "25", 10, noElectrode}, {"+1", " ", "25", NoIon, no1},
        {"+1 +3", "25", "", NoIon, noIon},      {"+3", "25", "", 10, no2},
        {"+0", "25", "", NoIon, nullptr},       {"+1 +2", "", "", 0, nullptr},
        {"+3 +4", "", "", 10, nullptr},         {"+1 +4", "", "", 10, no1},
    };
    for (const auto& [steps, celsius1, celsius2, ion, message] : rows) {
        Dialog d;
        d.state.IonIndex = static_cast<std::int16_t>(ion);
        d.form.Load();
        d.Click(steps);
        d.form.txtC = {celsius1, celsius2, "", "", "", "type"};
        if (message) d.prompts.ExpectMessage(message);
        const bool fine = message == nullptr, back = d.form.Back();
        EXPECT_EQ(Joined(back, d.folder.Get("KELVO.ini") != "[Hareware]\r\n", d.state.RefElectrode[0]),
                  Joined(fine, fine, "type"))
            << steps << ": the common reads come before the checks";
    }
    Dialog blank({0, 1, 1, 0, 0});
    blank.form.Load();
    blank.form.TypeIon("  ");
    blank.prompts.ExpectMessage(noIon);
    EXPECT_FALSE(blank.form.Back()) << "a name of blanks is none";
}

TEST(HardwarePresenter, BackStoresAndWrites) {
    Dialog d({1, 0, 0, 0, 0});
    d.state.ElectrodeNum = {"old ise", "old 1", "old 2"};
    d.state.RefElectrode = {"type", "number"};
    d.state.CaliTemp = "20";
    d.form.Load();
    EXPECT_EQ(Joined(d.form.number, d.form.txtC), "old 1,old ise,old 2|,,,,number,type");
    d.Click("+1 +3 +2");
    d.form.number = {"one", "ise", "two"};
    d.form.txtC[0] = " 24 ";
    d.form.txtC[1] = " 21.5 ";
    d.form.oper = "Ann";
    d.form.isab = "TISAB";
    d.form.networkPrinter = true;
    d.form.portIndex = d.form.formatIndex = 1;
    d.form.TypeIon("Mg");
    ASSERT_TRUE(d.form.Back());
    EXPECT_EQ(d.folder.Get("KELVO.ini"),
              "[Hareware]\r\nIonIndex=25\r\nCustomIon=Mg\r\nCustomWeight= 100\r\nDateFormat=1\r\nOperator=Ann\r\n"
              "RefType=type\r\nRefNum=number\r\nISENum=ise\r\nph1Num=old 1\r\npH2Num=two\r\nNetworkPrinter= 1\r\n"
              "ISAB=TISAB\r\nPortSetting= 1\r\nChannel0=0\r\nChannel1=1\r\nChannel2=1\r\nChannel3=1\r\nChannel4=0\r\n"
              "Temperature1=24\r\nTemperature2=21.5\r\n");
    EXPECT_EQ(
        Joined(d.state.FileElectrodeNum, d.state.FileRefElectrode, d.state.Channel, d.state.InputActive,
               d.state.ActiveCount, d.state.HardwarePort, d.state.Temperature, d.state.CaliTemp, d.state.StatusMessage),
        "ise,old 1,two|type,number|0,1,1,1,0|1,1,1,0|3|2|,24,21.5||")
        << "the number of pH 1, which is off, is kept; the working temperature follows entry 0";
    d.state.IniPath = d.folder / "none/KELVO.ini";
    EXPECT_TRUE(d.form.Back()) << "settings that cannot be written hold in this run";
    EXPECT_NE(d.state.StatusMessage.find(d.state.IniPath), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
