#include "core/Clock.h"
#include "kit/PictureView.h"
#include "ph/frmPHMe.h"
#include "tour/LinkedTour.h"

namespace kelvo::test {
namespace {

/// Recordings on the real screen.
class RecordingTour : public LinkedTour {
 protected:
    void SetUp() override {
        LinkedTour::SetUp();
        PlugIn({});
        for (const char* electrode : {"electrode 1 ", "electrode 2 "})
            for (const char* setting : {"ph", "eo 413", "slope 59", "noise 0", "response 1"})
                interface_->Execute(std::string(electrode) + setting);
        state.JournalPath = Path("own/");
        clock.now = {2026, 11, 25, 21, 30, 0};
        state.MenuBranch = 0;
        state.pHMode = -1;
        state.Channel = {1, 0, 1, 1, 1};
        state.BufferCount = {4, 2, 2};
        state.Buffers1 = state.Buffers2 = {{0, 0, 0}, {0, 7, 0}, {0, 4, 177}};
        state.PhCaliTemp = {0, 25, 25};
        state.PhCaliDate = {"", "24/11/2026 08:00", "24/11/2026 08:00"};
        state.CmbTime = state.cmbX = 0;
        state.cmbY = 4;
        state.chk1 = state.chk2 = {true, false};
        link.StartLink();
    }

    /// Points, two seconds each, with a frame through the real line before every one.
    void Points(int count, bool frames = true) {
        auto* screen = dynamic_cast<frmPHMe*>(screens.Find(ScreenCode::frmPHMe));
        ASSERT_NE(screen, nullptr);
        for (int i = 0; i < count; ++i) {
            clock.Pass(2);
            if (frames) Frame();
            screen->Tick();
        }
        ProcessEvents();
    }
    static void Type(Screen* screen, const char* number) {
        EntryBox* box = Box(screen, "txtTT(0)");
        box->setFocus();
        box->selectAll();
        Keys(screen, number);
        Enter(screen);
    }
    static int Ink(const QImage& image) {
        int drawn = 0;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2)
                drawn += image.pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
        return drawn;
    }
};

TEST_F(RecordingTour, TwoElectrodesFromStartToSavedFile) {
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", true);
    files.Expect(Path("night"));
    screens.Show(ScreenCode::frmPHMe);
    Screen* screen = Shown(ScreenCode::frmPHMe);
    EXPECT_EQ(FromQt(screen->windowTitle()), "pH Continuous Recording started at:  25/11/2026 21:30:00");
    EXPECT_EQ(screen->cursor().shape(), Qt::BusyCursor);
    EXPECT_FALSE(Find<QAction>(screen, "mnuF")->isEnabled() || Find<QAction>(screen, "mnuStart")->isEnabled());
    interface_->simulation.Command("buffer 7.00");
    Points(6);
    interface_->simulation.Command("buffer 4.00");
    Points(5);
    EXPECT_EQ(screen->cursor().shape(), Qt::ArrowCursor);
    Photograph(screen, "recording-running");
    Points(3, false);
    EXPECT_TRUE(Box(screen, "txtTT(1)")->property("stale").toBool());
    Photograph(screen, "recording-gap");
    Choose(screen, "mnuStop");
    EXPECT_TRUE(Find<QLabel>(screen, "Label3")->isVisible() && Find<QAction>(screen, "mnuF")->isEnabled());
    QTest::mouseClick(Find<QWidget>(screen, "picPH"), Qt::LeftButton);
    EXPECT_FALSE(Find<QLabel>(screen, "Label3")->isVisible());
    Choose(screen, "mnuStart");
    Choose(screen, "mnupH(1)");
    Points(2);
    Photograph(screen, "recording-scale");
    Choose(screen, "mnupH(4)");
    Points(5);
    EXPECT_EQ(Text(screen, "txtTT(0)"), "20");
    EXPECT_EQ(Text(screen, "txtTT(3)"), "00:00:40");
    Type(screen, "12");
    EXPECT_EQ(Text(screen, "txtTT(3)"), "00:00:24");
    EXPECT_NE(screen->StatusText().find("s old; hollow in the graph."), std::string::npos);
    Photograph(screen, "recording-complete");

    Choose(screen, "mnuOption(1)");
    EXPECT_EQ(dataTable.Rows(), 1 + 21 + 1);
    Photograph(Shown(ScreenCode::frmQSave), "recording-table");
    Choose(screens.Find(ScreenCode::frmQSave), "mnuBack");
    files.Expect(Path("graph"));
    Choose(screen, "mnuExportTo(0)");
    EXPECT_GT(Ink(QImage(ToQt(Path("graph.png")))), 3000);
    EXPECT_NE(screen->StatusText().find("exported to graph.png."), std::string::npos) << screen->StatusText();
    files.Expect(Path("graph"));
    Choose(screen, "mnuExportTo(1)");
    EXPECT_NE(Content("graph.svg").find("Electrode 2</text>"), std::string::npos);
    Choose(screen, "mnuCopy");
    EXPECT_GT(Ink(QGuiApplication::clipboard()->image()), 3000);
    for (const char* print : {"mnuPrint(0)", "mnuPrint(1)"}) {
        files.Expect(Path(print));
        Choose(screen, print);
        EXPECT_TRUE(Content(std::string(print) + ".pdf").starts_with("%PDF")) << print;
    }

    const std::string live = Content("night.phc");
    EXPECT_EQ(std::count(live.begin(), live.end(), '\n'), 13 + 21);
    prompts.ExpectMessage("Your data have been saved: " + Path("night.phc"));
    Choose(screen, "mnuMainmenu");
    Shown(ScreenCode::frmenu);
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmPHMe) || link.PortOpen());

    state.ViewOnly = 1;
    files.Expect(Path("NIGHT.PHC"));
    screens.Show(ScreenCode::frmPHMe);
    screen = Shown(ScreenCode::frmPHMe);
    EXPECT_FALSE(Box(screen, "txtTT(3)")->isVisible() || Find<QAction>(screen, "mnuStop")->isEnabled());
    Type(screen, "20");
    EXPECT_EQ(Text(screen, "txtTT(1)"), Text(screen, "txtTT(2)"));
    Photograph(screen, "recording-viewed");
    Choose(screen, "mnuOption(1)");
    Screen* shown = Shown(ScreenCode::frmQSave);
    EXPECT_EQ(table.Shown().Rows(), 1 + 21);
    files.Expect(Path("night"));
    Choose(shown, "mnuExportTo(0)");
    const std::string csv = Content("night.csv");
    EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 1 + 21);
    Choose(shown, "mnuBack");
    Choose(screen, "mnuOption(1)");
    EXPECT_EQ(table.Shown().txtData[2], "pH: 7, 4\r\nmV:0, 177(25°C)") << "the head of the file as well, once more";
    Choose(screens.Find(ScreenCode::frmQSave), "mnuBack");
    screen->close();
    Shown(ScreenCode::frmenu);
}

TEST_F(RecordingTour, AnIonWithoutAFileIsAskedForOnLeaving) {
    state.pHMode = 0;
    state.Channel = {0, 1, 1, 0, 0};
    state.IonIndex = 10;
    state.CaliPoints = 2;
    state.CaliE = {0, -180, 0};
    state.CaliPpm = {0, 1000, 1};
    state.CaliLogC = {0, -1.2787f, -4.2787f};
    state.FileTemp = "25";
    state.FileDate = "24/11/2026 09:05";
    state.MenuBranch = 1;
    screens.Show(ScreenCode::frmenu);
    Click(Shown(ScreenCode::frmenu), "cmdSub(5)");
    Screen* setup = Shown(ScreenCode::frmPHSe);
    Click(setup, "cmdOK");
    EXPECT_TRUE(Find<QRadioButton>(setup, "optise(0)")->isChecked());
    Photograph(setup, "recording-ise-choice");
    prompts.ExpectAsk("Would you like to use this calibration and start the Continuous Recording", true);
    Click(setup, "cmdOK");
    ProcessEvents();
    setup = Shown(ScreenCode::frmPHSe);
    EXPECT_FALSE(Find<QWidget>(setup, "frm3DChl(0)")->isVisible());
    Find<QComboBox>(setup, "cmbY")->setCurrentIndex(2);
    Photograph(setup, "recording-ise-settings");
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
    Click(setup, "cmdOK");
    Screen* screen = Shown(ScreenCode::frmPHMe);
    for (const char* setting : {"ise", "eo -255", "slope -60"})
        interface_->Execute(std::string("electrode 1 ") + setting);
    for (const char* beaker : {"immerse 10 ppm", "immerse 500 ppm"}) {
        interface_->simulation.Command(beaker);
        Points(4);
    }
    EXPECT_FALSE(Box(screen, "txtTT(2)")->isVisible());
    EXPECT_EQ(FromQt(Find<QLabel>(screen, "labtitle(1)")->text()), "Electrode 1 F (ppm)");
    Photograph(screen, "recording-ise");
    EXPECT_NE(Find<QLabel>(screen, "lblLive")->text().indexOf("8 of 21 points, the next in 00:00:02"), -1);
    prompts.ExpectAsk("The recording is running: 8 of 21 points are taken. End it? With No it goes on.", true);
    prompts.ExpectAskToSave("Would you like to save the current data table?", true);
    files.Expect(Path("day"));
    screen->close();
    Shown(ScreenCode::frmenu);
    EXPECT_NE(Content("DAY.tab").find("8\tF - 7\t21:30:16\t"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(folder / "own"));
    EXPECT_TRUE(std::filesystem::exists(folder / "DAY.tab.rows"));
}

TEST_F(RecordingTour, ADeclinedOneIsInTheFileMenu) {
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
    screens.Show(ScreenCode::frmPHMe);
    Screen* screen = Shown(ScreenCode::frmPHMe);
    Points(2);
    Choose(screen, "mnuStop");
    prompts.ExpectAskToSave("Would you like to save the current data table?", false);
    Choose(screen, "mnuFile(0)");
    Screen* setup = Shown(ScreenCode::frmPHSe);
    emit Find<QAction>(setup, "mnuAside")->menu()->aboutToShow();
    files.Expect(Path("back"));
    Choose(setup, "mnuAsideItem(0)");
    EXPECT_NE(Content("back.phc").find("\t21:30:04\t"), std::string::npos);
    EXPECT_EQ(setup->StatusText(), "The recording has been brought back and saved.");
}

TEST_F(RecordingTour, FitsEveryDisplay) {
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
    screens.Show(ScreenCode::frmPHMe);
    Screen* screen = Shown(ScreenCode::frmPHMe);
    Points(8);
    Choose(screen, "mnuStop");
    const QWidget* graph = Find<QWidget>(screen, "picPH");
    // The last is what a scale of 1.5 leaves of 1366 x 768.
    for (const QSize size : {QSize(1366, 768), QSize(1024, 720), QSize(840, 590), QSize(910, 512)}) {
        screen->resize(size);
        ProcessEvents();
        EXPECT_EQ(Find<QScrollArea>(screen, "body")->verticalScrollBar()->maximum(), 0) << size.height();
        EXPECT_EQ(Find<QScrollArea>(screen, "body")->horizontalScrollBar()->maximum(), 0) << size.width();
        EXPECT_GE(graph->height(), size.height() - 330);
    }
    prompts.ExpectAskToSave("Would you like to save the current data table?", false);
    Choose(screen, "mnuMainmenu");
}

}  // namespace
}  // namespace kelvo::test
