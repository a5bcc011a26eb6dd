#include <algorithm>

#include "devices/ScreenPrint.h"
#include "support/Patience.h"
#include "tour/ScreenshotFixture.h"

namespace kelvo::test {
namespace {

/// The whole main road on the real screens, as an analyst walks it.
class Tour : public ScreenshotFixture {
 protected:
    /// One typed point: potential, then ppm; the temperature only at the first.
    void Point(const char* mv, const char* ppm, const char* celsius, const char* picture) {
        OnModal([=, this](Screen* point) {
            EXPECT_EQ(Focus(point), "txtbox(0)");
            Put(point, mv);
            EXPECT_EQ(Focus(point), "txtbox(1)");
            Put(point, ppm);
            if (celsius != nullptr) {
                EXPECT_EQ(Focus(point), "txtbox(4)");
                Put(point, celsius);
            }
            EXPECT_EQ(Focus(point), "cmdok");
            if (picture != nullptr) Photograph(point, picture);
            molar_.push_back(Text(point, "txtbox(2)"));
            logC_.push_back(Text(point, "txtbox(3)"));
            Enter(point);
        });
    }

    void Configure() {
        screens.Show(ScreenCode::frmNorvak);
        Screen* norvak = Shown(ScreenCode::frmNorvak);
        Photograph(norvak, "01-opening");
        Enter(norvak);
        Screen* start = Shown(ScreenCode::frmtxt);
        Photograph(start, "02-start");
        Key(start, Qt::Key_Down);
        Key(start, Qt::Key_Down);
        Enter(start);

        Screen* hardware = Shown(ScreenCode::frmHware);
        Find<QCheckBox>(hardware, "Chkchl(1)")->setFocus();
        Key(hardware, Qt::Key_Space);
        Box(hardware, "txtNum(1)")->setFocus();
        Put(hardware, "ISE-17");
        Box(hardware, "txtC(5)")->setFocus();
        Put(hardware, "Ag/AgCl");
        Put(hardware, "R-3");
        Box(hardware, "txtOp")->setFocus();
        Put(hardware, "M. Curie, lab 2");
        Photograph(hardware, "03-hardware");
        Click(hardware, "cmdHware(0)");
        EXPECT_NE(Content("KELVO.ini").find("Operator=M. Curie, lab 2\r\n"), std::string::npos);
    }

    void Calibrate() {
        Screen* start = Shown(ScreenCode::frmtxt);
        Find<QPushButton>(start, "cmdMain(1)")->setFocus();
        Enter(start);
        Screen* menu = Shown(ScreenCode::frmenu);
        Photograph(menu, "04-menu");
        Click(menu, "cmdSub(1)");

        Screen* setup = Shown(ScreenCode::frmsetup);
        EXPECT_EQ(Find<QComboBox>(setup, "cmbspion")->currentText(), "F");
        Find<QCheckBox>(setup, "chkdat(0)")->setChecked(false);
        Find<QCheckBox>(setup, "chkdat(0)")->click();
        Photograph(setup, "05-setup");
        Point("-54", "1000", "25", "06-point-1");
        Point("4", "100", nullptr, "07-point-2");
        Point("62", "10", nullptr, nullptr);
        Point("120", "1", nullptr, nullptr);
        prompts.ExpectAskToSave("Would you like to save the calibration", true);
        files.Expect(Path("fluor"));
        Click(setup, "cmdspok");
        EXPECT_EQ(molar_, (std::vector<std::string>{"5.26E-02", "5.26E-03", "5.26E-04", "5.26E-05"}));
        EXPECT_EQ(logC_, (std::vector<std::string>{"-1.2790", "-2.2790", "-3.2790", "-4.2790"}));
    }

    void SaveAndReopen() {
        Screen* main = Shown(ScreenCode::fmISEcli);
        EXPECT_TRUE(prompts.Done());
        EXPECT_EQ(state.LastSlope, -58.0f);
        EXPECT_EQ(state.CaliDirty, 0);
        const std::string file = Content("FLUOR.ISE");
        EXPECT_NE(
            file.find(
                "\"25\"\r\n\"24/11/2026 09:05\"\r\n\"M. Curie, lab 2\"\r\n\"Ag/AgCl\"\r\n\"R-3\"\r\n\"ISE-17\"\r\n"),
            std::string::npos)
            << file;
        Photograph(main, "08-calibrated");

        files.Expect(Path("fluor.ise"));
        Choose(main, "mnuOpen(0)");
        EXPECT_EQ(Text(main, "txtslope(0)"), "-58.00");
        EXPECT_EQ(FromQt(main->windowTitle()), "ISE Measurement:    24/11/2026 09:05");
        EXPECT_EQ(FromQt(Find<QListWidget>(main, "lstCli")->item(1)->text()), "Total Slope:   -58.00");
        Photograph(main, "09-reopened");
    }

    void Curves() {
        Screen* main = Shown(ScreenCode::fmISEcli);
        const auto lines = [this](int colour) {
            return std::count_if(state.Graph.Items().begin(), state.Graph.Items().end(),
                                 [colour](const DisplayItem& item) {
                                     return item.kind == DisplayItem::Kind::Line && item.colour == colour;
                                 });
        };
        Choose(main, "mnuNonLinear");
        EXPECT_EQ(lines(colour::LightBlue), 3);
        EXPECT_TRUE(Text(main, "txtslope(0)").empty());
        Photograph(main, "10-partly-linear");
        Choose(main, "mnuRgrsCli");
        EXPECT_EQ(lines(colour::LightRed), 100);
        Photograph(main, "11-best-fit");
        Choose(main, "mnumV(3)");
        EXPECT_EQ(lines(colour::LightRed), 0) << "a best-fit curve waits for Refresh";
        Choose(main, "mnuRefresh");
        EXPECT_EQ(lines(colour::LightRed), 100);
        EXPECT_EQ(lines(colour::LightBlue), 0);
        Choose(main, "mnuLogC(2)");
        Choose(main, "mnuLinear");
        Photograph(main, "12-other-scale");
    }

    void Measure() {
        Screen* main = Shown(ScreenCode::fmISEcli);
        prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
        Choose(main, "mnuPotentiometry(0)");
        EXPECT_EQ(Focus(main), "txtT(0)");
        Put(main, "30");
        EXPECT_EQ(Text(main, "txtT(3)"), "35.60");
        Put(main, "100.5");
        EXPECT_EQ(Focus(main), "txtT(0)");
        EXPECT_EQ(state.SampleCount, 2);
        ASSERT_EQ(dataTable.Rows(), 4);
        EXPECT_EQ(dataTable.RowText(1), " 1\t\t09:05\t30\t35.60\t1.87E-3\t25\t77.0\t7.5");
        Photograph(main, "13-samples");
    }

    void Table() {
        Screen* main = Shown(ScreenCode::fmISEcli);
        // A quick save takes the boxes once more and asks for the number of the sample.
        main->findChild<QWidget*>("txtT(0)")->setFocus();
        Put(main, "30");
        OnModal([this](Screen* number) {
            EXPECT_EQ(Focus(number), "Text1");
            Photograph(number, "14-sample-number");
            Put(number, "Tap 1");
        });
        Choose(main, "mnuQsave");
        ASSERT_EQ(dataTable.Rows(), 6);
        EXPECT_EQ(dataTable.Cell(4, 1), "Tap 1");

        files.Expect(Path("samples"));
        Choose(main, "mnuSave(1)");
        const std::string saved = Content("SAMPLES.tab");
        EXPECT_NE(saved.find("\t09:05\t30\t35.60\t1.87E-3\t25\t77.0\t7.5\r\n"), std::string::npos) << saved;

        files.Expect(Path("samples.tab"));
        Choose(main, "mnuOpen(1)");
        Screen* grid = Shown(ScreenCode::frmQSave);
        auto* view = Find<QTableView>(grid, "Grid1");
        ASSERT_EQ(view->model()->rowCount(), 4);
        EXPECT_EQ(FromQt(view->model()->index(3, 1).data().toString()), "Tap 1");
        Photograph(grid, "15-table");

        files.Expect(Path("samples"));
        Choose(grid, "mnuExportTo(0)");
        EXPECT_NE(Content("samples.csv").find("1,,09:05,30,35.60,1.87E-3,25,77.0,7.5,"), std::string::npos);
        files.Expect(Path("samples"));
        Choose(grid, "mnuExportTo(1)");
        EXPECT_EQ(Content("samples.xlsx").substr(0, 2), "PK");

        if (SystemPrinter() != PrinterState::None) return;
        files.Expect(Path("table"));
        Choose(grid, "mnuFile(2)");
        EXPECT_EQ(Content("table.pdf").substr(0, 5), "%PDF-");
        Choose(grid, "mnuBack");
        EXPECT_FALSE(grid->isVisible());
        files.Expect(Path("report"));
        Choose(main, "mnuPrint(1)");
        QProcess reader;
        reader.start("pdftotext", {"-layout", ToQt(Path("report.pdf")), "-"});
        ASSERT_TRUE(reader.waitForFinished(PatienceMs)) << "pdftotext is needed to look into a PDF";
        const std::string text = FromQt(QString::fromUtf8(reader.readAllStandardOutput()).simplified());
        for (const char* part :
             {"E (mV)", "Operator Name: M. Curie, lab 2", "Total Slope: -58.00", "Calibration Data:"})
            EXPECT_NE(text.find(part), std::string::npos) << part << " in " << text;
    }

    void Leave() {
        Screen* main = Shown(ScreenCode::fmISEcli);
        Choose(main, "mnumain");
        Shown(ScreenCode::frmenu);
        EXPECT_FALSE(screens.IsLoaded(ScreenCode::fmISEcli) || screens.IsLoaded(ScreenCode::frmQSave));
    }

    std::vector<std::string> molar_, logC_;
};

TEST_F(Tour, FromHardwareToMeasuredSample) {
    Configure();
    Calibrate();
    SaveAndReopen();
    Curves();
    Measure();
    Table();
    Leave();
}

}  // namespace
}  // namespace kelvo::test
