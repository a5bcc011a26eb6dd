#include "link/HardwareForm.h"

#include <functional>

#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

const char* const NoElectrode = "Please select one electrode.";
const char* const NoTemperature1 = "You need to select the temperature channel or input a default for the electrode 1";
const char* const NoTemperature2 = "You need to select the temperature channel or input a default for the electrode 2";
const char* const NoIonChosen = "You need to select an detected ion for the ISE measurement";

struct Dialog {
    explicit Dialog(std::array<std::int16_t, 5> channel = {}) {
        state.IniPath = folder.Put("KELVO.ini", "[Hareware]\r\n");
        state.Channel = channel;
    }
    /// "+1 -3": switches box 1 on, then box 3 off.
    void Click(const std::string& steps) {
        for (std::size_t i = 0; i + 1 < steps.size(); i += 3)
            form.Click(steps[i + 1] - '0', steps[i] == '+');
    }
    /// Ticks by index, then what is to be seen: n serial numbers, s2 sensor 2, ise, t temperatures, L their labels.
    std::string Seen() const {
        std::string seen;
        for (const bool on : form.checked)
            seen += on ? '1' : '0';
        const char* const numbers[] = {" n0", " n1", " n2"};
        for (std::size_t i = 0; i < 3; ++i)
            if (form.numberVisible[i]) seen += numbers[i];
        if (form.sensor2Visible && form.sensor2Enabled) seen += " s2";
        if (form.iseVisible) seen += " ise";
        if (form.TemperatureVisible(1)) seen += " t1";
        if (form.TemperatureVisible(2)) seen += " t2";
        if (form.TemperatureLabelsVisible()) seen += " L";
        return seen;
    }
    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    HardwareForm form{state, prompts};
};

TEST(HardwareForm, TicksDecideWhatIsShown) {
    struct Row {
        const char* name;
        std::array<std::int16_t, 5> channel;
        const char* steps;
        const char* seen;
        int sensors = 2;
    };
    const Row rows[] = {
        {"nothing plugged in: the pH box", {}, "", "00000 n0 s2 t1 t2 L"},
        {"pH 1", {1, 0, 0, 0, 0}, "", "10000 n0 s2 t1 t2 L"},
        {"an ISE has no use for sensor 2", {0, 1, 0, 0, 0}, "", "01000 n1 ise t1 L"},
        {"but pH 2 beside it has", {0, 1, 0, 1, 0}, "", "01010 n1 n2 s2 ise t1 t2 L"},
        {"sensors for their temperatures", {1, 0, 1, 1, 1}, "", "10111 n0 n2 s2"},
        {"ISE after pH 1", {1, 0, 0, 0, 0}, "+1", "01000 n1 ise t1 L"},
        {"pH 1 after ISE", {0, 1, 0, 0, 0}, "+0", "10000 n0 s2 t1 t2 L"},
        {"there and back", {0, 1, 0, 0, 0}, "+0 +1", "01000 n1 ise t1 L"},
        {"pH 1 off", {1, 0, 0, 0, 0}, "-0", "00000 s2 t1 t2 L"},
        {"ISE on from nothing", {}, "+1", "01000 n1 ise t1 L"},
        {"pH 2 on, beside ISE", {0, 1, 0, 0, 0}, "+3", "01010 n1 n2 s2 ise t1 t2 L"},
        {"ISE on, beside pH 2", {1, 0, 0, 1, 0}, "+1", "01010 n1 n2 s2 ise t1 t2 L"},
        {"and off again", {0, 1, 0, 0, 0}, "+3 -3", "01000 n1 ise t1 L"},
        {"pH 2 off beside pH 1", {1, 0, 0, 1, 0}, "-3", "10000 n0 s2 t1 t2 L"},
        {"sensor 1 on", {1, 0, 0, 0, 0}, "+2", "10100 n0 s2 t2 L"},
        {"sensor 2 off again", {1, 0, 1, 0, 1}, "-4", "10100 n0 s2 t2 L"},
        {"one sensor: the second cannot be ticked", {1, 0, 0, 1, 0}, "+4", "10010 n0 n2 t1 L", 1},
        {"one sensor covers all", {1, 0, 1, 1, 1}, "", "10110 n0 n2", 1},
    };
    for (const Row& row : rows) {
        Dialog d(row.channel);
        d.state.SensorCount = static_cast<std::int16_t>(row.sensors);
        d.form.Load();
        d.Click(row.steps);
        EXPECT_EQ(d.Seen(), row.seen) << row.name;
    }
}

TEST(HardwareForm, LoadsTheState) {
    Dialog d({0, 1, 0, 1, 0});
    d.state.ElectrodeNum = {"ise", "one", "two"};
    d.state.RefElectrode = {"type", "number"};
    d.state.Operator = "Ann";
    d.state.ISAB = "TISAB";
    d.state.NetworkPrinter = 1;
    d.state.PortIndex = 3;
    d.state.DateFormat = 2;
    d.state.IonIndex = 25;
    d.state.Ions.names[25] = "Mg";
    d.state.Temperature = {"", "25", ""};
    d.form.Load();
    EXPECT_EQ(Joined(d.form.number, d.form.txtC, d.form.oper, d.form.isab, d.form.networkPrinter, d.form.portIndex,
                     d.form.formatIndex, d.form.ionIndex, d.form.ionText),
              "one,ise,two|25,,77.0,,number,type|Ann|TISAB|1|3|1|25|Mg");
}

TEST(HardwareForm, Temperatures) {
    struct Row {
        int box;
        const char* typed;
        const char* boxes;
    };
    const Row rows[] = {
        {0, "37", "37,21,98.6,69.8"}, {1, "-40", "25,-40,77.0,-40.0"}, {2, "98.6", "37.0,21,98.6,69.8"},
        {3, "32", "25,0.0,77.0,32"},  {0, "1E39", "1E39,21,,69.8"},    {3, "1E300", "25,,77.0,1E300"},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.state.Temperature = {"", "25", "21"};
        d.form.Load();
        d.form.txtC[static_cast<std::size_t>(row.box)] = row.typed;
        d.form.ConvertTemperature(row.box);
        EXPECT_EQ(Joined(d.form.txtC), std::string(row.boxes) + ",,") << row.typed;
    }
    Dialog d;
    d.state.Temperature = {"", "1E39", "21"};
    d.form.Load();
    EXPECT_EQ(Joined(d.form.txtC), "1E39,21,,69.8,,") << "a damaged setting opens as well, and can be put right";
    d.form.txtC[1] = "30";
    d.Click("+4 -4");
    EXPECT_EQ(Joined(d.form.txtC), "1E39,21,,69.8,,") << "the box without its sensor shows the stored value";
}

TEST(HardwareForm, Ion) {
    struct Row {
        const char* name;
        std::function<void(HardwareForm&)> choose;
        int stored;
        const char* custom;
    };
    const Row rows[] = {
        {"from the list", [](HardwareForm& f) { f.SelectIon(5); }, 5, "Li"},
        {"the first of the list", [](HardwareForm& f) { f.SelectIon(0); }, 0, "Li"},
        {"typed as listed", [](HardwareForm& f) { f.TypeIon("NO3"); }, 19, "Li"},
        {"typed as listed first", [](HardwareForm& f) { f.TypeIon("Ag"); }, 0, "Li"},
        {"typed, of another case", [](HardwareForm& f) { f.TypeIon("no3"); }, 25, "no3"},
        {"typed, then chosen", [](HardwareForm& f) { f.TypeIon("Mg"), f.SelectIon(3); }, 3, "Li"},
        {"chosen, then typed", [](HardwareForm& f) { f.SelectIon(3), f.TypeIon("Mg"); }, 25, "Mg"},
        {"custom", [](HardwareForm& f) { f.SelectIon(25), f.CustomIonDone(); }, 25, "Li"},
    };
    for (const Row& row : rows) {
        Dialog d({0, 1, 1, 0, 0});
        d.state.CustomIon = "Li";
        d.state.CustomWeight = 6.94f;
        d.form.Load();
        row.choose(d.form);
        ASSERT_TRUE(d.form.Back()) << row.name;
        EXPECT_EQ(Joined(d.state.IonIndex, d.state.CustomIon), Joined(row.stored, row.custom)) << row.name;
        EXPECT_EQ(Joined(d.state.Ions.names[25], d.state.Ions.weights[25]),
                  row.stored == 25 ? row.custom + std::string("|6.94") : "Custom|100")
            << row.name;
    }
}

TEST(HardwareForm, BackChecksInOrder) {
    struct Row {
        const char* name;
        const char* steps;
        std::array<std::string, 2> temperatures;
        int ion;
        const char* message;  ///< or none
    };
    const Row rows[] = {
        {"nothing", "", {"25", "25"}, 10, NoElectrode},
        {"sensors alone", "+2 +4", {"25", "25"}, 10, NoElectrode},
        {"ISE without a temperature, before its ion", "+1", {"", "25"}, NoIon, NoTemperature1},
        {"pH 1 without a temperature", "+0", {"", "25"}, 10, NoTemperature1},
        {"ISE without an ion, before channel 2", "+1 +3", {"25", ""}, NoIon, NoIonChosen},
        {"pH 2 without a temperature", "+3", {"25", ""}, 10, NoTemperature2},
        {"pH 1 needs no ion", "+0", {"25", ""}, NoIon, nullptr},
        {"pH 2 needs no temperature 1", "+3", {"", "25"}, NoIon, nullptr},
        {"a sensor is a temperature", "+1 +2", {"", ""}, 10, nullptr},
        {"sensor 2 for channel 2", "+3 +4", {"", ""}, 10, nullptr},
        {"sensor 2 is none for channel 1", "+1 +4", {"", ""}, 10, NoTemperature1},
        {"Ag is an ion", "+1", {"25", ""}, 0, nullptr},
    };
    for (const Row& row : rows) {
        Dialog d;
        d.state.IonIndex = static_cast<std::int16_t>(row.ion);
        d.form.Load();
        d.Click(row.steps);
        d.form.txtC[0] = row.temperatures[0];
        d.form.txtC[1] = row.temperatures[1];
        if (row.message) d.prompts.ExpectMessage(row.message);
        EXPECT_EQ(d.form.Back(), row.message == nullptr) << row.name;
        EXPECT_EQ(d.prompts.lastTitle, "");
        EXPECT_EQ(d.folder.Get("KELVO.ini") == "[Hareware]\r\n", row.message != nullptr) << row.name;
    }
}

TEST(HardwareForm, BackStoresAndWrites) {
    Dialog d({1, 0, 0, 0, 0});
    d.state.ElectrodeNum = {"old ise", "old 1", "old 2"};
    d.state.CaliTemp = "20";
    d.form.Load();
    d.Click("+1 +3 +2");
    d.form.number = {"one", "ise", "two"};
    d.form.txtC = {" 24 ", " 21.5 ", "", "", "number", "type"};
    d.form.oper = "Ann";
    d.form.isab = "TISAB";
    d.form.networkPrinter = true;
    d.form.portIndex = 1;
    d.form.formatIndex = 1;
    d.form.TypeIon("Mg");
    ASSERT_TRUE(d.form.Back());
    EXPECT_EQ(d.folder.Get("KELVO.ini"),
              "[Hareware]\r\nIonIndex=25\r\nCustomIon=Mg\r\nCustomWeight= 100\r\nDateFormat=1\r\nOperator=Ann\r\n"
              "RefType=type\r\nRefNum=number\r\nISENum=ise\r\nph1Num=old 1\r\npH2Num=two\r\nNetworkPrinter= 1\r\n"
              "ISAB=TISAB\r\nPortSetting= 1\r\nChannel0=0\r\nChannel1=1\r\nChannel2=1\r\nChannel3=1\r\nChannel4=0\r\n"
              "Temperature1=24\r\nTemperature2=21.5\r\n");
    EXPECT_EQ(Joined(d.state.ElectrodeNum, d.state.FileElectrodeNum, d.state.FileRefElectrode, d.state.Channel,
                     d.state.InputActive, d.state.ActiveCount, d.state.HardwarePort, d.state.NetworkPrinter),
              "ise,old 1,two|ise,old 1,two|type,number|0,1,1,1,0|1,1,1,0|3|2|1")
        << "the number of pH 1, which is off, is kept";
    EXPECT_EQ(Joined(d.state.Temperature, d.state.CaliTemp, d.state.Remark), ",24,21.5||")
        << "the working temperature follows entry 0";
}

TEST(HardwareForm, CommonReadsComeBeforeTheChecks) {
    Dialog d;
    d.form.Load();
    d.form.oper = "Ann";
    d.form.isab = "TISAB";
    d.form.txtC[HardwareForm::RefType] = "type";
    d.form.txtC[HardwareForm::RefNumber] = "number";
    d.form.portIndex = 2;
    d.form.formatIndex = -1;
    d.state.DateFormat = 1;
    d.prompts.ExpectMessage(NoElectrode);
    EXPECT_FALSE(d.form.Back());
    EXPECT_EQ(Joined(d.state.Operator, d.state.ISAB, d.state.RefElectrode, d.state.PortIndex, d.state.DateFormat),
              "Ann|TISAB|type,number|2|0");
}

TEST(HardwareForm, SettingsThatCannotBeWritten) {
    Dialog d({1, 0, 1, 0, 0});
    d.state.IniPath = d.folder / "none/KELVO.ini";
    d.form.Load();
    EXPECT_TRUE(d.form.Back());
    EXPECT_NE(d.state.Remark.find(d.state.IniPath), std::string::npos);
    EXPECT_EQ(d.state.ActiveCount, 2) << "they hold in this run";
}

}  // namespace
}  // namespace kelvo::test
