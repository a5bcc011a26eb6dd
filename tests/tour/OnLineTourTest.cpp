#include "calibration/fmpaidat.h"
#include "devices/ScreenPrint.h"
#include "link/frmPtset.h"
#include "tour/LinkedTour.h"

namespace kelvo::test {
namespace {

/// The road of one on-line calibration and sample.
class OnLineTour : public LinkedTour {
 protected:
    void SetUp() override {
        LinkedTour::SetUp();
        state.Channel = {0, 1, 1, 0, 0};
        state.IonIndex = 10;
        state.CaliTemp = "20.0";
        state.MenuBranch = 1;
    }

    /// Its time of the day stands still, as the rows show.
    template <typename Form>
    void Second(Screen* screen) {
        clock.steady += 1;
        Frame();
        dynamic_cast<Form*>(screen)->Tick();
    }
    void PlugIn() {
        LinkedTour::PlugIn({"electrode 1 noise 0", "electrode 1 response 1", "immerse 1000 ppm"});
        state.ASD = 1;
        state.ASDavg = 3;
        state.Threshold = 0.1f;
        state.Waittime = 2;
    }

    void ReadsAThirdOnLine(Screen* screen);
    Screen* OpenSetup(int points) {
        screens.Show(ScreenCode::frmenu);
        Click(Shown(ScreenCode::frmenu), "cmdSub(1)");
        Screen* setup = Shown(ScreenCode::frmsetup);
        Find<QComboBox>(setup, "cmbspE")->setCurrentIndex(2);
        Find<QComboBox>(setup, "CmbspC")->setCurrentIndex(1);
        EXPECT_TRUE(Find<QCheckBox>(setup, "chkdat(1)")->isChecked()) << "on line is the first choice";
        Find<QCheckBox>(setup, "chkdat(2)")->click();
        Box(setup, "txtspin")->SetText(std::to_string(points));
        return setup;
    }

    /// A point of the modal entry, from the beaker that stands under the electrodes to the accepted value.
    void Point(const char* beaker, const char* ppm, const char* picture) {
        OnModal([=, this](Screen* point) {
            auto* ok = Find<QPushButton>(point, "cmdok");
            interface_->Execute(std::string("immerse ") + beaker);
            EXPECT_EQ(Focus(point), "txtbox(1)");
            Put(point, ppm);
            EXPECT_TRUE(Box(point, "txtbox(0)")->isVisible());
            EXPECT_EQ(FromQt(ok->text()), "Now");
            if (picture != nullptr) Photograph(point, std::string(picture) + "-waiting");
            for (int second = 0; second < 60 && ok->text() == "Now"; ++second)
                Second<fmpaidat>(point);
            EXPECT_EQ(FromQt(ok->text()), "OK");
            // A threshold of a tenth lets the reading settle within its last place; some seconds more take it home.
            for (int second = 0; second < 8; ++second)
                Second<fmpaidat>(point);
            EXPECT_EQ(FromQt(Find<QLabel>(point, "linkLight")->accessibleName()), "Interface: live");
            if (picture != nullptr) Photograph(point, std::string(picture) + "-stable");
            potentials_.push_back(Text(point, "txtbox(0)"));
            ok->setFocus();
            Enter(point);
        });
    }

    /// A sample up to its stable reading.
    void Sample(Screen* reading, const char* beaker) {
        interface_->Execute(std::string("immerse ") + beaker);
        auto* ok = Find<QPushButton>(reading, "cmdset(0)");
        for (int second = 0; second < 12; ++second)
            Second<frmPtset>(reading);
        Enter(reading);
        EXPECT_EQ(FromQt(ok->text()), "Now");
        for (int second = 0; second < 60 && ok->text() == "Now"; ++second)
            Second<frmPtset>(reading);
        EXPECT_EQ(FromQt(ok->text()), "Ok");
    }

    std::vector<std::string> potentials_;
};

TEST_F(OnLineTour, FromCalibrationToMeasuredSamples) {
    PlugIn();
    Screen* setup = OpenSetup(2);
    Photograph(setup, "online-setup");
    Point("1000 ppm", "1000", "online-point-1");
    Point("10 ppm", "10", nullptr);
    prompts.ExpectAskToSave("Would you like to save the calibration", true);
    files.Expect(Path("online"));
    Click(setup, "cmdspok");
    Screen* main = Shown(ScreenCode::fmISEcli);
    // Eo -120, slope -58.2 at 25 °C: log10 of 1000 ppm fluoride is -1.2787.
    EXPECT_EQ(potentials_, (std::vector<std::string>{"-45.60", "70.80"}));
    EXPECT_EQ(Text(main, "txtslope(0)"), "-58.20");
    EXPECT_EQ(state.PointTemp, "25.0") << "the sensor's temperature, not the 20.0 typed before";
    EXPECT_FALSE(link.PortOpen()) << "the link stops with the entry";

    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
    Choose(main, "mnuPotentiometry(1)");
    Screen* reading = Shown(ScreenCode::frmPtset);
    EXPECT_FALSE(reading->isModal()) << "the first sample is read beside the screen";
    Sample(reading, "100 ppm");
    Photograph(reading, "online-reading");
    Enter(reading);
    ProcessEvents();
    EXPECT_EQ(dataTable.RowText(1), " 1\t\t09:05\t12.60\t99.93\t5.26E-3\t25.0\t77.0\tN/A");
    EXPECT_TRUE(reading->isVisible() && reading->isModal()) << "and comes back for the next one";
    EXPECT_EQ(reading->StatusText(), "waiting for the first reading");
    Sample(reading, "1 ppm");
    interface_->PullOut();
    Enter(reading);
    Screen* ports = Shown(ScreenCode::frmPortSettings);
    EXPECT_EQ(QApplication::activeModalWidget(), ports) << "in front of the reading dialog, where it can be clicked";
    Click(ports, "cmdCancel");
    EXPECT_EQ(QApplication::activeModalWidget(), reading);
    EXPECT_EQ(state.SampleCount, 2);
    Photograph(main, "online-samples");
    Key(reading, Qt::Key_Escape);
    ProcessEvents();
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmPtset) || link.PortOpen());
    prompts.ExpectAskToSave("Would you like to save the data table?", false);
    Choose(main, "mnumain");
}

TEST_F(OnLineTour, AValueThatIsNoMeasurementIsGreyedAndMayBeTaken) {
    PlugIn();
    state.ASD = 0;
    Screen* setup = OpenSetup(3);
    const auto shown = [](Screen* point) {
        EntryBox* box = Box(point, "txtbox(0)");
        const bool grey = box->palette().color(QPalette::Text) == QColor("#4a515a");
        EXPECT_EQ(grey, point->StatusText() != "not yet steady");
        return box->Text() + "|" + point->StatusText();
    };
    OnModal([=, this](Screen* point) {
        dynamic_cast<fmpaidat*>(point)->Tick();
        EXPECT_EQ(shown(point), "|waiting for the first reading");
        EXPECT_EQ(FromQt(Find<QLabel>(point, "linkLight")->accessibleName()), "Interface: waiting");
        Put(point, "1000");
        Second<fmpaidat>(point);
        // -45.6 + 100.2 / e: the electrode follows within a second.
        EXPECT_EQ(shown(point), "-8.70|not yet steady");
        Click(point, "cmdok");
    });
    OnModal([=, this](Screen* point) {
        Put(point, "10");
        clock.steady += 12.5;  // the interface has died between the points
        dynamic_cast<fmpaidat*>(point)->Tick();
        EXPECT_EQ(shown(point), "-8.70|the value is 12 s old: no new reading since");
        Photograph(point, "online-point-stale");
        Click(point, "cmdok");
    });
    OnModal([=, this](Screen* point) {
        Put(point, "1");
        Second<fmpaidat>(point);
        prompts.ExpectInput("Average Setup", "4");
        Choose(point, "mnuOption(0)");
        Second<fmpaidat>(point);
        EXPECT_EQ(shown(point), "-10.15|averaging: 1 of 4 readings");
        Click(point, "cmdcancel");
    });
    Click(setup, "cmdspok");
    EXPECT_EQ(state.CaliE[2], -8.7f);
}

TEST_F(OnLineTour, NoPortBringsItsDialogInFront) {
    state.ASD = 0;
    Screen* setup = OpenSetup(2);
    OnModal([this](Screen* dialog) {
        EXPECT_EQ(FromQt(Find<QLineEdit>(dialog, "txtStatus")->text()),
                  "COM1 is unavailable. Please select a different port.");
        link.Port().Dialog.advice = PermissionAdvice("/dev/ttyUSB0");
        link.Port().SetStatus(link.Port().Dialog.txtStatus);
        EXPECT_TRUE(Find<QLabel>(dialog, "lblAdvice")->isVisible());
        Photograph(dialog, "online-port-missing");
        // OK cannot mend what was missing when the dialog loaded.
        Find<QPushButton>(dialog, "cmdOK")->click();
        EXPECT_EQ(FromQt(Find<QLineEdit>(dialog, "txtStatus")->text()),
                  "COM1 is unavailable. Please select a different port.");
        EXPECT_EQ(link.Port().PortNumber, 1) << "with nothing to choose from the port stays as it was";
        Key(dialog, Qt::Key_Escape);
    });
    OnModal([this](Screen* point) {
        EXPECT_EQ(FromQt(Find<QLabel>(point, "linkLight")->accessibleName()), "Interface: port lost");
        Put(point, "10");
        dynamic_cast<fmpaidat*>(point)->Tick();
        EXPECT_EQ(Text(point, "txtbox(0)"), "") << "no potential that nobody has measured";
        Photograph(point, "online-port-lost");
        Find<QPushButton>(point, "cmdcancel")->click();
    });
    Click(setup, "cmdspok");
    EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmPortSettings));
}

TEST_F(OnLineTour, ARouteThatNeedsTheInterfaceStartsTheLinkFirst) {
    state.Channel[3] = 1;
    state.MenuBranch = 0;
    state.BufferCount[1] = 2;
    screens.Show(ScreenCode::frmenu);
    Screen* menu = Shown(ScreenCode::frmenu);
    prompts.ExpectMessage(
        "The interface is not ready, please check the connection, or if you use Printer/Interface switch box, make "
        "sure it is switched to the Interface");
    Click(menu, "cmdSub(2)");
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmDsply));
    EXPECT_TRUE(screens.IsShown(ScreenCode::frmPortSettings)) << "so that the analyst sees why";
    PlugIn();
    Click(menu, "cmdSub(2)");
    Shown(ScreenCode::frmDsply);
    EXPECT_TRUE(link.PortOpen());
}

TEST_F(OnLineTour, TheHardwareScreenReachesThePortDialog) {
    PlugIn();
    std::filesystem::create_symlink(interface_->terminal.Device(), Com(3));
    screens.Show(ScreenCode::frmHware);
    Screen* hardware = Shown(ScreenCode::frmHware);
    auto* ports = Find<QComboBox>(hardware, "cmbPort");
    ports->setCurrentIndex(1);
    OnModal([this](Screen* dialog) {
        auto* list = Find<QComboBox>(dialog, "cboPort");
        EXPECT_EQ(FromQt(list->itemText(1)), "COM3");
        Photograph(dialog, "online-port-dialog");
        EXPECT_EQ(Focus(dialog), "cboPort");
        Key(dialog, Qt::Key_Down);
        emit list->activated(list->currentIndex());
        prompts.ExpectMessage("The test on Comm3 is successful.");
        Find<QPushButton>(dialog, "cmdOK")->click();
    });
    emit ports->activated(1);
    ProcessEvents();
    EXPECT_EQ(ports->currentIndex(), 1) << "the row of the dialog's list, not the number of the port";
    EXPECT_EQ(link.Port().PortNumber, 3);
}

TEST_F(OnLineTour, TheStabilitySettingsAreUsedByKeyboardAlone) {
    state.ASD = 1;
    OnModal([this](Screen* dialog) {
        Photograph(dialog, "online-stability");
        Put(dialog, "31");
        Put(dialog, "0.9");
        prompts.ExpectMessage("The average settingdata are out of range, please type in again.");
        Enter(dialog);
        EXPECT_EQ(Focus(dialog), "txtAuto(0)");
        Find<QRadioButton>(dialog, "OptAuto(1)")->setFocus();
        Key(dialog, Qt::Key_Space);
        Box(dialog, "txtAuto(3)")->setFocus();
        Put(dialog, "120");
        Enter(dialog);
    });
    screens.ShowModal(ScreenCode::frmAutoD);
    EXPECT_TRUE(state.ASD == 2 && state.Preset == 120);
}

/// One more addition of 2 mL to the two potentials of the screen: 90.26 ppm.
void OnLineTour::ReadsAThirdOnLine(Screen* screen) {
    OnModal([this](Screen* several) {
        Find<EntryBox>(several, "txtAddition(10)")->setFocus();
        Put(several, "2");
        OnModal([this](Screen* reading) {
            EXPECT_EQ(Text(reading, "Text1"), "") << "the value before the addition is none after it";
            interface_->Execute("immerse 90.26 ppm");
            for (int second = 0; second < 15; ++second)
                Second<frmPtset>(reading);
            Enter(reading);
        });
        Click(several, "cmdRead");
        EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmPtset));
        EXPECT_EQ(Text(several, "txtAddition(21)"), "15.20");
        EXPECT_TRUE(FromQt(Find<QLabel>(several, "lblResult")->text()).starts_with("17.48 ppm"));
        Photograph(several, "several-additions");
        prompts.ExpectAsk("The additions are in no file and in no table. Would you like to leave them?", true);
        Key(several, Qt::Key_Escape);
    });
    Choose(screen, "mnuOption(3)");
}

TEST_F(OnLineTour, BothAdditionMethodsReadTheirPotentials) {
    // The interface has −58.2 mV per decade. 2 mL of 1000 ppm lift 50 mL of 17.48 ppm to 55.27 ppm; 5 mL of 71.34 ppm
    // lift 50 mL of 5 ppm to 11.03 ppm.
    const struct {
        int button;
        ScreenCode code;
        const char *entries, *beakers[2], *potentials, *result;
    } rows[] = {{3, ScreenCode::frmStanad01, "50 20 1000", {"17.48", "55.27"}, "56.70 27.60 25.0", "17.48"},
                {4, ScreenCode::frmSampa, "5 100 5", {"5", "11.03"}, "88.30 68.30 25.0", "71.34"}};
    PlugIn();
    state.ASD = 0;
    state.CaliSlope = state.LastSlope = -58.2f;
    state.FileTemp = "25";
    for (const auto& row : rows) {
        const bool standard = row.button == 3;
        const char* const tick = standard ? "chkptl(1)" : "chksmptl(1)";
        const std::string picture = standard ? "online-standard-addition" : "online-sample-addition";
        SCOPED_TRACE(tick);
        screens.Show(ScreenCode::frmenu);
        Click(Shown(ScreenCode::frmenu), QStringLiteral("cmdSub(%1)").arg(row.button));
        Screen* screen = Shown(row.code);
        std::istringstream entries(row.entries);
        for (std::string entry; entries >> entry;)
            Put(screen, entry.c_str());
        for (const char* beaker : row.beakers)
            OnModal([this, beaker, screen, &row, &picture](Screen* reading) {
                EXPECT_EQ(Text(reading, "Text1"), "") << "the value before the addition is none after it";
                interface_->Execute("immerse " + std::string(beaker) + " ppm");
                for (int second = 0; second < 15; ++second)
                    Second<frmPtset>(reading);
                EXPECT_EQ(Text(screen, "txtbox(1)"), "25.0") << "the temperature follows the sensor";
                if (beaker == row.beakers[1]) Photograph(reading, picture + "-reading");
                Enter(reading);
            });
        Find<QCheckBox>(screen, tick)->click();
        EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmPtset));
        EXPECT_EQ(Text(screen, "txtbox(14)") + " " + Text(screen, "txtbox(15)") + " " + Text(screen, "txtbox(1)"),
                  row.potentials);
        EXPECT_EQ(Focus(screen), standard ? "cmdstrslt(0)" : "cmdsmrslt(0)");
        prompts.ExpectAskToSave("Would you like to save these data?", false);
        Enter(screen);
        EXPECT_EQ(Text(screen, "txtbox(16)"), row.result);
        Photograph(screen, picture);
        if (standard) ReadsAThirdOnLine(screen);
        files.Expect(Path("lake"));
        Choose(screen, "mnuSave(0)");
        if (SystemPrinter() == PrinterState::None) {
            files.Expect(Path("lake.pdf"));
            Choose(screen, "mnuPrint(0)");
            EXPECT_EQ(Content("lake.pdf").substr(0, 5), "%PDF-");
            std::filesystem::remove(Path("lake.pdf"));
        }
        Choose(screen, "mnuFile(0)");
        EXPECT_EQ(Text(screen, "txtbox(16)"), "");
        files.Expect(Path(standard ? "lake.std" : "lake.smp"));
        Choose(screen, "mnuOpen(0)");
        EXPECT_EQ(Text(screen, "txtbox(16)"), row.result);
        // Given up at the first potential: the box keeps what it had, and the port is free again.
        OnModal([](Screen* reading) {
            EXPECT_TRUE(Find<QLabel>(reading, "Label1")->text().startsWith("Please immerse the electrode in the s"));
            Key(reading, Qt::Key_Escape);
        });
        Find<QCheckBox>(screen, tick)->click();
        EXPECT_FALSE(link.PortOpen() || screens.IsLoaded(ScreenCode::frmPtset));
        Choose(screen, "mnuBack");
    }
}

}  // namespace
}  // namespace kelvo::test
