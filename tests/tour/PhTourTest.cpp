#include "core/Clock.h"
#include "ph/frmDsply.h"
#include "ph/frmPHMe.h"
#include "ph/frmPset.h"
#include "tour/LinkedTour.h"

namespace kelvo::test {
namespace {

/// From two buffers to the live display.
class PhTour : public LinkedTour {
 protected:
    void SetUp() override {
        LinkedTour::SetUp();
        state.pHMode = -1;
        state.MenuBranch = 0;
        state.ElectrodeNum = {"", "PH-1", "PH-2"};
        state.Operator = "M. Curie";
        // Channel 1: 413 - 59 · pH, so 0 mV at pH 7. Channel 2: 414 - 58.6 · pH.
        PlugIn({"electrode 1 ph", "electrode 1 eo 413", "electrode 1 slope 59", "electrode 1 noise 0",
                "electrode 1 response 0", "electrode 2 noise 0", "electrode 2 response 0"});
    }

    template <typename Form>
    void Second(Screen* screen) {
        clock.Pass(1);
        Frame();
        dynamic_cast<Form*>(screen)->Tick();
    }
    /// A second in which nothing comes.
    void SilentSecond(Screen* screen) {
        clock.Pass(1);
        dynamic_cast<frmDsply*>(screen)->Tick();
    }

    /// One buffer of the modal dialog, by keyboard.
    void Buffer(const std::string& ph, const char* picture = nullptr) {
        OnModal([=, this](Screen* dialog) {
            interface_->Execute("buffer " + ph);
            EXPECT_EQ(Focus(dialog), "txtph(0)");
            EXPECT_EQ(Text(dialog, "txtph(1)"), ".0") << "no value of the buffer before";
            Click(dialog, "cmdph(0)");
            EXPECT_TRUE(dialog->isVisible()) << "no buffer of 0 mV";
            Box(dialog, "txtph(0)")->setFocus();
            Second<frmPset>(dialog);
            Second<frmPset>(dialog);
            Put(dialog, ph.c_str());
            EXPECT_EQ(Focus(dialog), "cmdph(0)");
            taken_ += FromQt(dialog->windowTitle()).back() + (":" + Text(dialog, "txtph(1)")) + "/" +
                      Text(dialog, "txtph(2)") + " ";
            if (picture != nullptr) {
                EXPECT_GE(Box(dialog, "txtph(1)")->fontMetrics().capHeight(), 40) << "read from two metres";
                Photograph(dialog, picture);
            }
            Enter(dialog);
        });
    }
    Screen* Menu(int row) {
        screens.Show(ScreenCode::frmenu);
        Click(Shown(ScreenCode::frmenu), QStringLiteral("cmdSub(%1)").arg(row));
        return nullptr;
    }
    static std::string Label(Screen* screen, const QString& name) { return FromQt(Find<QLabel>(screen, name)->text()); }
    std::string Values(Screen* display) {
        std::string text;
        for (int i = 0; i < 4; ++i)
            text += (i == 0 ? "" : "|") + Label(display, QStringLiteral("lbldata(%1)").arg(i));
        return text;
    }

    std::string taken_;
};

TEST_F(PhTour, OneElectrodeFromTwoBuffersToKeptRows) {
    state.Channel = {1, 0, 1, 0, 0};
    Menu(1);
    Screen* setup = Shown(ScreenCode::frmPHSe);
    EXPECT_EQ(Focus(setup), "txtbf(0)");
    EXPECT_TRUE(Find<QRadioButton>(setup, "OptCali2(1)")->isChecked());
    EXPECT_FALSE(Box(setup, "txtbf(1)")->isVisible());
    prompts.ExpectMessage("You need to re-configure the hardware setup to enable this channel.");
    Find<QRadioButton>(setup, "OptCali2(0)")->click();
    EXPECT_TRUE(Find<QRadioButton>(setup, "OptCali2(1)")->isChecked());
    Photograph(setup, "ph-calibration-setup");
    Enter(setup);
    EXPECT_EQ(Focus(setup), "cmdOK");
    Buffer("7.00", "ph-buffer");
    Buffer("4.00");
    prompts.ExpectAskToSave("Would you like to save the calibration data and use them for the measurement?", true);
    files.Expect(Path("two"));
    Enter(setup);
    ProcessEvents();
    EXPECT_EQ(taken_, "1:.0/25.0 1:177.0/25.0 ");
    Screen* menu = Shown(ScreenCode::frmenu);
    EXPECT_EQ(menu->StatusText(),
              "Electrode 1: slope -59.0 mV/pH, 99.7 % of the theoretical one at 25.0 °C, offset 0.0 mV at pH 7.");
    Photograph(menu, "ph-calibrated");

    Click(menu, "cmdSub(2)");
    Screen* display = Shown(ScreenCode::frmDsply);
    EXPECT_EQ(Label(display, "lbltxt(4)") + "|" + Label(display, "lbltxt(8)") + "|" + Label(display, "lbltxt(9)"),
              "PH-1|24/11/2026 09:05|7, 4");
    interface_->Execute("buffer 5.00");
    Photograph(display, "ph-display-waiting");
    for (int i = 0; i < 20; ++i)
        Second<frmDsply>(display);
    EXPECT_EQ(Values(display), "5.00|118.0||");
    EXPECT_EQ(Label(display, "lblWorth(0)"), "steady");
    EXPECT_FALSE(Find<QPushButton>(display, "cmdDsply(0)")->isEnabled());
    Photograph(display, "ph-display-one");

    OnModal([this](Screen* number) {
        EXPECT_TRUE(screens.IsShown(ScreenCode::frmQSave));
        Put(number, "Tap");
    });
    files.Expect(Path("live"));
    Choose(display, "mnuQsave");
    EXPECT_EQ(dataTable.RowText(1), " 1\tTap\t09:05\t5.00\t118.0\t25.0\t77.0\t\t\t25.0\t77.0");
    EXPECT_NE(Content("LIVE.pht").find("\tTap\t09:05\t5.00\t118.0\t25.0\t77.0"), std::string::npos);
    EXPECT_EQ(state.CaliDirty, 0);
    Second<frmDsply>(display);
    EXPECT_EQ(Label(display, "lblWorth(0)"), "steady") << "the display goes on";

    for (int i = 0; i < 12; ++i)
        SilentSecond(display);
    EXPECT_EQ(Label(display, "lblWorth(0)"), "12 s old");
    EXPECT_GE(Find<QLabel>(display, "lbldata(0)")->font().pixelSize(), 60) << "grey, and still read from afar";
    Photograph(display, "ph-display-stale");
    state.ElectrodeNum[1] = "PH-9";
    interface_->Execute("unplug sensor 1");
    prompts.ExpectMessage(
        "The Temperature sensor 1 is not working, please check the connection or re-configure the hardware setup.");
    Second<frmDsply>(display);
    Second<frmDsply>(display);
    EXPECT_EQ(Label(display, "lblDoubt(0)"), "temperature sensor 1 does not work; calibrated with electrode PH-1");
    Photograph(display, "ph-display-sensor-lost");
    Click(display, "cmdDsply(1)");
    EXPECT_EQ(Focus(display), "cmdDsply(0)");
    Photograph(display, "ph-display-stopped");
    files.Expect(Path("screen"));
    Choose(display, "mnuPrint(0)");
    EXPECT_TRUE(Content("screen.pdf").starts_with("%PDF")) << "no printer here: a file";
    files.Expect(Path("table"));
    Choose(display, "mnuPrint(1)");
    prompts.ExpectMessage("Your data have been saved: " + Path("LIVE.pht"));
    Click(display, "cmdDsply(2)");
    Shown(ScreenCode::frmenu);
    EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmDsply));
    EXPECT_EQ(state.ReturnScreen, 0);

    Click(Shown(ScreenCode::frmenu), "cmdSub(3)");
    setup = Shown(ScreenCode::frmPHSe);
    Click(setup, "cmdOK");
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", true);
    files.Expect(Path("run"));
    Click(setup, "cmdOK");
    Screen* recording = Shown(ScreenCode::frmPHMe);
    interface_->Execute("plug sensor 1");
    for (int i = 0; i < 21; ++i) {
        clock.Pass(1);
        Second<frmPHMe>(recording);
    }
    EXPECT_EQ(Text(recording, "txtTT(0)") + " " + Text(recording, "txtTT(1)"), "20 5.00");
    EXPECT_TRUE(Find<QAction>(recording, "mnuF")->isEnabled());
    Photograph(recording, "ph-recorded");
    prompts.ExpectMessage("Your data have been saved: " + Path("run.phc"));
    recording->close();
    Shown(ScreenCode::frmenu);
    EXPECT_NE(Content("run.phc").find("\r\n21\t20\t"), std::string::npos);
}

TEST_F(PhTour, TwoElectrodesTwoSensorsAndFourBuffers) {
    state.Channel = {1, 0, 1, 1, 1};
    Menu(1);
    Screen* setup = Shown(ScreenCode::frmPHSe);
    Box(setup, "txtbf(0)")->setFocus();
    Put(setup, "4");
    for (int i = 0; i < 3; ++i)
        Find<QWidget>(setup, "Spinbf(1)")->findChild<QToolButton*>("SpinUp")->click();
    EXPECT_EQ(Text(setup, "txtbf(1)"), "4");
    for (int electrode = 0; electrode < 2; ++electrode)
        for (const char* ph : {"2.00", "4.00", "7.00", "10.00"})
            Buffer(ph);
    prompts.ExpectAskToSave("Would you like to save the calibration data and use them for the measurement?", true);
    files.Expect(Path("four"));
    Click(setup, "cmdOK");
    // 413 - 59 pH and 414 - 58.6 pH
    EXPECT_EQ(taken_,
              "1:295.0/25.0 1:177.0/25.0 1:.0/25.0 1:-177.0/25.0 2:296.8/25.0 2:179.6/25.0 2:3.8/25.0 2:-172.0/25.0 ");

    Click(Shown(ScreenCode::frmenu), "cmdSub(2)");
    Screen* display = Shown(ScreenCode::frmDsply);
    // The model's slope follows the temperature about pH 0, the compensation about pH 7.
    interface_->Execute("buffer 7.50");
    Second<frmDsply>(display);
    EXPECT_EQ(Values(display), "7.50|-29.5|7.50|-25.5");
    Choose(display, "mnuSetting(2)");
    Choose(display, "mnuSetting(3)");
    for (int i = 0; i < 20; ++i)
        Second<frmDsply>(display);
    EXPECT_EQ(Label(display, "lblWorth(1)"), "steady, ATC");
    Photograph(display, "ph-display-two");
    prompts.ExpectAsk("Are you sure you want to exit?", false);
    Choose(display, "mnuFile(3)");
    OnModal([](Screen* number) { Key(number, Qt::Key_Escape); });
    files.Expect(std::nullopt);
    Choose(display, "mnuQsave");
    EXPECT_EQ(state.TableFile, "-999");
    EXPECT_EQ(dataTable.Rows(), 2) << "the row has gone again";
    OnModal([](Screen* number) { Put(number, "B"); });
    Choose(display, "mnuQsave");
    Choose(display, "mnuSetting(4)");
    Screen* shownTable = Shown(ScreenCode::frmQSave);
    Photograph(shownTable, "ph-display-table");
    Choose(shownTable, "mnuBack");
    prompts.ExpectAskToSave("Would you like to save the data table?", false);
    Key(display, Qt::Key_Escape);
    Shown(ScreenCode::frmenu);
}

TEST_F(PhTour, CancelBringsBackTheMenuAndTheLastCalibration) {
    state.Channel = {1, 0, 1, 0, 0};
    Menu(1);
    Screen* setup = Shown(ScreenCode::frmPHSe);
    const auto before = state.Buffers1;
    Buffer("7.00");
    OnModal([](Screen* dialog) { Key(dialog, Qt::Key_Escape); });
    Click(setup, "cmdOK");
    EXPECT_EQ(Shown(ScreenCode::frmenu)->StatusText(), "The last calibration is in use again.");
    EXPECT_EQ(state.Buffers1, before);
    EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmPset));
}

TEST_F(PhTour, ARecordingIsSetUp) {
    state.Channel = {1, 0, 1, 0, 0};
    Menu(3);
    Screen* setup = Shown(ScreenCode::frmPHSe);
    EXPECT_TRUE(Find<QRadioButton>(setup, "Opt(0)")->isChecked());
    EXPECT_FALSE(Find<QAction>(setup, "mnuO")->isEnabled());
    Photograph(setup, "ph-recording-choice");
    Find<QRadioButton>(setup, "Opt(0)")->setFocus();
    Click(setup, "cmdOK");
    EXPECT_FALSE(Find<QRadioButton>(setup, "Opt(0)")->isVisible());
    auto* intervals = Find<QComboBox>(setup, "CmbTime");
    auto* periods = Find<QComboBox>(setup, "cmbX");
    EXPECT_EQ(FromQt(Find<QComboBox>(setup, "cmbY")->currentText()), "0 - 14");
    EXPECT_EQ(FromQt(periods->currentText()), "      40 Seconds");
    intervals->setCurrentIndex(8);
    EXPECT_EQ(state.CmbTime, 8);
    EXPECT_EQ(periods->currentIndex(), -1);
    EXPECT_EQ(FromQt(periods->itemText(3)), "       4 Days");
    auto* second = Find<QCheckBox>(setup, "chk2(0)");
    second->click();
    EXPECT_FALSE(second->isChecked()) << "its channel is off";
    Find<QCheckBox>(setup, "chk1(1)")->click();
    EXPECT_TRUE(state.chk1[0] && state.chk1[1]);
    Photograph(setup, "ph-recording-settings");
    Click(setup, "cmdCancel");
    Shown(ScreenCode::frmenu);
}

}  // namespace
}  // namespace kelvo::test
