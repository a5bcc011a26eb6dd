#include "tables/Reports.h"

#include <algorithm>
#include <functional>

#include "calibration/CaliGraph.h"
#include "calibration/Calibration.h"
#include "core/Clock.h"
#include "support/Joined.h"
#include "tables/PrintedPage.h"
#include "tables/QualityReport.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// What a fake device printed; it outlives its page.
struct Printout {
    std::vector<std::string> lines;
    int pages = 1, pictures = 0, failAtLine = -1;
    float lastGap = 0, lastY = 0;  ///< twips from the line before the last to the last, place of the last
    float rowPoints = 0;           ///< of the last row that begins with a blank
    bool ended = false;

    std::string Text() const {
        std::string text;
        for (const std::string& line : lines)
            text += line + "\n";
        return text;
    }
    int CountOf(const std::string& part) const {
        return static_cast<int>(std::count_if(
            lines.begin(), lines.end(), [&](const std::string& line) { return line.find(part) != std::string::npos; }));
    }
};

constexpr float A4Width = 10205, A4Height = 15137;  ///< 180 × 267 mm

/// Letters 0.6 of their size wide, lines 1.2 of it high: a page that holds 71 letters of 12 points across. Any text
/// beyond its edges fails the test.
class FakePage : public PageWriter {
 public:
    explicit FakePage(Printout& out, std::string file = {}) : out_(out), file_(std::move(file)) {}
    float Width() const override { return A4Width; }
    float Height() const override { return A4Height; }
    float TextWidth(const std::string& text) const override {
        return static_cast<float>(Characters(text)) * Points() * 12;
    }
    float LineHeight() const override { return Points() * 24; }
    void Draw(const DisplayList& picture, float width, float height) override {
        EXPECT_LE(CurrentY() + height * std::min(1.0f, A4Width / width), A4Height + 0.5f);
        out_.pictures += picture.Empty() ? 0 : 1;
    }
    void NewPage() override {
        ++out_.pages;
        MoveTo(0, 0);
    }
    void EndDocument() override { out_.ended = true; }
    std::string FileName() const override { return file_; }

 protected:
    void DrawText(float x, float y, const std::string& text) override {
        if (static_cast<int>(out_.lines.size()) == out_.failAtLine) throw RuntimeError(ErrorNumber::DeviceIo);
        EXPECT_LE(x + TextWidth(text), A4Width + 0.5f) << "runs off the page: " << text;
        EXPECT_LE(y + LineHeight(), A4Height + 0.5f) << "runs off the page: " << text;
        out_.lines.push_back(text);
        out_.lastGap = y - out_.lastY;
        out_.lastY = y;
        if (text.starts_with(' ')) out_.rowPoints = Points();
    }

 private:
    Printout& out_;
    std::string file_;
};

class FakePrinting : public Printing {
 public:
    int ready = 1;
    std::string file;
    Printout out;
    int PrinterReady(int) override { return ready; }
    std::unique_ptr<PageWriter> Begin(const std::string&) override { return std::make_unique<FakePage>(out, file); }
};

class ReportTest : public TableTest {
 protected:
    /// On two passes, as a print is made.
    static Printout Print(const std::function<void(Sheets&)>& print) {
        Printout out;
        FakePage page(out);
        Progress none;
        const SheetHead head{"Title", "RUN.TAB", "24/11/2026 09:05"};
        Sheets counter(page, head, 0, none);
        print(counter);
        EXPECT_TRUE(out.lines.empty() && out.pages == 1 && out.pictures == 0) << "a count draws nothing";
        Sheets sheets(page, head, counter.Number(), none);
        print(sheets);
        EXPECT_EQ(sheets.Number(), out.pages);
        return out;
    }
    Printout Table() {
        return Print([&](Sheets& page) {
            PrintTable(state, table, page);
            PrintSignature(page);
        });
    }
    PrintServices Services(FakePrinting& printing) { return {printing, prompts, clock, progress}; }
    static std::string SheetHeadLines(int page, int of) {
        return "Page " + std::to_string(page) + " of " + std::to_string(of) +
               "\nTitle\nRUN.TAB\nPrinted: 24/11/2026 09:05\n";
    }
    Progress progress;
    const std::string signature = "Date: ______________   Signature: ______________________\n";
    const std::string rule = std::string(70, '=') + "\n";
};

TEST_F(ReportTest, SampleTableInFixedFields) {
    AddSamples();
    logic.AddRow(" 3\t\t09:09\t-100\t22\t1E-3\t25\t77.0\t7.5");
    Printout out = Table();
    EXPECT_EQ(out.Text(), SheetHeadLines(1, 1) + "ISE Sample Data Table\n" + rule +
                              "Calibration Date/Time :   24/11/2026 08:30\n"
                              "Reference Electrode:      Ag/AgCl R7\n"
                              "Electrode serial number:  F123\n"
                              "Calibration Standard (ppm): 1       10      10\n"
                              "Calibration Value (mV):   -179.5  -120.5  -119\n"
                              "Calibration Slopes:       59.00   N/A\n"
                              "Ion:                      F\n"
                              "Temperature:              25 °C, 77.0 °F\n"
                              "ISAB/Notes:               TISAB II\n"
                              "Operator Name:            Ann Lee\n"
                              "Experiment Date:          24/11/2026\n" +
                              rule +
                              "Number              Time        mV          ppm         mol/L       °C          pH\n"
                              "Tap 1               09:05       -150.2      3.14        1.65E-4     25          7.5\n"
                              "Brook µ°            09:07       -100        22.23       1.17E-3     25          7.5\n"
                              "                    09:09       -100        22          1E-3        25          7.5\n"
                              "No interval goes with these rows.\n" +
                              signature);
    EXPECT_EQ(out.rowPoints, 9) << "92 letters fit the page at 9 points (9936 twips), not at 9.25 (10212)";
    // What is known of the rows stands below each, and what the intervals hold once at the end.
    const std::string basis = "scatter of 4 standards and of 1 reading";
    const std::string remark =
        "at or below the detection limit of 0.018 ppm: no interval; calibration doubtful: the slope is 71.0 %";
    table.SetFacts(1, {{fact::Low, "3.01"}, {fact::High, "3.28"}, {fact::Unit, "ppm"}, {fact::Basis, basis}});
    table.SetFacts(2, {{fact::Remark, remark}});
    out = Table();
    EXPECT_TRUE(out.Text().ends_with(
        "3.14        1.65E-4     25          7.5\n    3.01 to 3.28 ppm (95 %)\n"
        "Brook µ°            09:07       -100        22.23       1.17E-3     25          7.5\n"
        "    at or below the detection limit of 0.018 ppm: no interval; calibration doubtful: the slope\n    is 71.0 %\n"
        "                    09:09       -100        22          1E-3        25          7.5\n"
        "    no interval goes with this row\nInterval: " +
        basis + ".\n" + signature))
        << out.Text();
}

TEST_F(ReportTest, TitlesSectionsAndHeadsByOwner) {
    const std::string heads = "Number Time   (°C)   (°F)   (mL)   (mL)       (ppm)      (mol/L)    (mV)       ";
    const std::tuple<ScreenCode, int, std::string, std::string, char> rows[] = {
        {ScreenCode::frmDsply, -1, "pH Measurement", "Temp.2 °F", '='},
        {ScreenCode::frmPHMe, -1, "pH Continuous Recording", "Temp.2 °F", '='},
        {ScreenCode::frmPHMe, 0, "ISE Continuous Recording", "pH", '='},
        {ScreenCode::frmSampa, 0, "Sample Addition Method", heads + "Sample(mV) (ppm)      (mol/L)", '_'},
        {ScreenCode::frmStanad01, 0, "Standard Addition Method", heads + "Std.(mV)   (ppm)      (mol/L)", '_'},
    };
    CalibratePh();
    for (const auto& [owner, pHMode, title, lastHead, lastRule] : rows) {
        SCOPED_TRACE(title);
        Own(owner, pHMode);
        logic.Load();
        const Printout out = Table();
        EXPECT_EQ(out.lines[4], title);
        EXPECT_EQ(out.CountOf(title + " Data:"), lastRule == '_' ? 0 : 1);
        EXPECT_EQ(out.CountOf(std::string(60, lastRule)), lastRule == '_' ? 1 : 2);
        EXPECT_TRUE(out.lines.rbegin()[1].ends_with(lastHead)) << "an empty table prints its heads and no row";
        EXPECT_EQ(Joined(out.CountOf("Electrode 1 :             PH-1   23/11/2026 16:00"),
                         out.CountOf("Calibration Value (mV):   0, 177(25°C)"), out.CountOf("Electrode 2 :")),
                  pHMode == 0 ? "0|0|0" : "1|1|0")
            << "electrode 2 has no calibration";
        logic.Unload();
    }
}

TEST_F(ReportTest, EveryPageHasItsNumberAndTheHeadsAndNothingIsLeftOut) {
    const std::string name = "Effluent of the third settling tank, taken below the weir at noon, filtered";
    for (int i = 1; i <= 100; ++i)
        logic.AddRow(" " + std::to_string(i) + "\t" + name + "\t09:05\t-100\t12345678.90\t1E-3\t25\t77.0\t7.5");
    const Printout out = Table();
    EXPECT_GT(out.pages, 2);
    EXPECT_EQ(out.CountOf("Number   "), out.pages);
    // The name is wrapped into several lines.
    EXPECT_EQ(Joined(out.CountOf("Effluent"), out.CountOf("filtered"), out.CountOf("12345678.90")), "100|100|100");
    for (int page = 1; page <= out.pages; ++page)
        EXPECT_EQ(out.CountOf("Page " + std::to_string(page) + " of " + std::to_string(out.pages)), 1) << page;
    for (const char* onEach : {"Title", "RUN.TAB", "Printed: 24/11/2026 09:05"})
        EXPECT_EQ(out.CountOf(onEach), out.pages) << onEach;
    EXPECT_EQ(out.CountOf("Signature: "), 1);
}

TEST_F(ReportTest, Calibration) {
    state.FileOperator = "Bo";
    const Printout out = Print([&](Sheets& page) {
        page.MoveTo(0, 12000);
        PrintCalibration(CalibrationOf(state), state.ISAB, page);
    });
    EXPECT_EQ(out.pages, 2) << "the head would not fit below";
    EXPECT_EQ(out.Text(), SheetHeadLines(1, 2) + SheetHeadLines(2, 2) + rule +
                              "Calibration Operator:     Bo\n"
                              "Calibration date and time: 24/11/2026 08:30\n"
                              "Reference Electrode:      Ag/AgCl R7\n"
                              "Electrode serial number:  F123\n"
                              "Total Slope:              58.50\n"
                              "°C:                       25\n"
                              "°F:                       77.0\n"
                              "Ion:                      F\n"
                              "ISAB/Notes:               TISAB II\n"
                              "\n"
                              "Calibration Data:\n"
                              "Number         mV             ppm            LogC           Partial Slope\n"
                              "1              -179.5         1.00           -5.00\n"
                              "2              -120.5         10.00          -4.00          59.00\n"
                              "3              -119.0         10.00          -4.00\n" +
                              rule +
                              "Calibration doubtful: the slope has the sign of a cation's, but F⁻ is an anion: are\n"
                              "the standards in the right order?\n");
}

TEST_F(ReportTest, IseReportPrintsGraphSamplesCalibrationAndTable) {
    SetScaleConstants(state, 2, 2);
    state.SampleCount = 2;
    state.SampleE = {-150.2f, -100};
    state.SampleLogC = {-4.5f, -4};
    AddSamples();
    const auto report = [&](bool samples) {
        return Print([&](Sheets& page) { PrintIseReport(state, CalibrationOf(state), table, clock, page, samples); });
    };
    const Printout out = report(true);
    // 10^-4.5 is 3.16E-5 mol/L, and 18.9984 g/mol make that 0.60 ppm; 10^-4 makes 1.90.
    EXPECT_TRUE(
        out.Text().starts_with(SheetHeadLines(1, 4) +
                               "3 of 3 standards lie outside the scale and are not drawn. 2 of 2 samples lie outside\n"
                               "the scale and are not drawn.\n"
                               "Operator Name:            Ann Lee\n"
                               "Experiment date and time: 24/11/2026 09:05\n"
                               "Number         mV             LogC           mol/L          ppm\n"
                               "1              -150.2         -4.50          3.16E-5        0.60\n"
                               "2              -100.0         -4.00          1.00E-4        1.90\n"))
        << out.Text();
    EXPECT_EQ(Joined(out.pictures, out.CountOf("Calibration Operator:"), out.CountOf("ISE Sample Data Table"),
                     out.CountOf("Calibration Quality"), out.CountOf("Signature: ")),
              "2|1|1|1|1");
    EXPECT_EQ(state.SampleCount, 2) << "printing stores no samples";
    EXPECT_EQ(report(false).CountOf("Experiment date") + report(false).CountOf("ISE Sample Data Table"), 0);
}

TEST_F(ReportTest, PrinterCheckAndFailures) {
    FakePrinting printing;
    logic.Load();
    printing.ready = 0;
    prompts.ExpectMessage(
        "The printer is not ready, please check the connection, or if you use Printer/Interface switch box, make sure "
        "it is switched to the Printer");
    EXPECT_FALSE(PrintTableDocument(state, table, true, Services(printing)));
    EXPECT_FALSE(printing.out.ended);
    state.NetworkPrinter = 1;
    EXPECT_TRUE(PrintTableDocument(state, table, true, Services(printing))) << "a network printer is not asked";
    EXPECT_EQ(Joined(printing.out.ended, printing.out.CountOf("File: not saved in a file")), "1|1");

    printing.out.failAtLine = static_cast<int>(printing.out.lines.size());
    prompts.ExpectMessage("Cannot print data, please check if the computer is connected to a printer.");
    EXPECT_FALSE(PrintTableDocument(state, table, true, Services(printing)));
    printing.file = "/a/b.pdf";
    prompts.ExpectMessage("Error57Saving/a/b.pdf:Device I/O error.");
    EXPECT_FALSE(PrintGraph(state, CalibrationOf(state), table, Services(printing), false));
}

TEST_F(ReportTest, TheSignatureHasRoomToWriteAndASheetOfItsOwnOnlyForWantOfIt) {
    const float line = 12 * 24;
    // lines of 12 points left on the sheet, sheets, lines between
    const std::tuple<float, int, float> rows[] = {{20, 1, 3}, {3, 1, 3}, {1.6f, 1, 1.6f}, {1.4f, 2, 0}};
    for (const auto& [left, pages, gap] : rows) {
        const float room = left;
        const Printout out = Print([&](Sheets& page) {
            page.FontSize(12);
            page.MoveTo(0, A4Height - (room + 1) * line);
            page.Print("the last row");
            PrintSignature(page);
        });
        EXPECT_EQ(out.pages, pages) << room;
        EXPECT_TRUE(pages > 1 || std::abs(out.lastGap - gap * line) < 1) << room;
    }
}

// The heads of a list that goes on, and a note longer than a page.
TEST_F(ReportTest, ListsGoOnUnderTheirHeads) {
    state.CaliPoints = 60;
    for (auto* column : {&state.CaliE, &state.CaliPpm, &state.CaliLogC})
        column->assign(61, 1);
    const Printout calibration = Print([&](Sheets& page) { PrintCalibration(CalibrationOf(state), state.ISAB, page); });
    EXPECT_GT(calibration.pages, 1);
    EXPECT_EQ(calibration.CountOf("Partial Slope"), calibration.pages);

    state.SampleCount = 101;
    const Printout samples = Print([&](Sheets& page) {
        for (int i = 0; i < state.SampleCount; ++i)
            PrintExperimentPoints(state, i, clock.Now(), page);
    });
    EXPECT_EQ(samples.CountOf("Number  "), samples.pages);
    AddSamples();
    for (int i = 0; i < 2000; ++i)
        table.txtData[7] += "note" + std::to_string(i) + " ";
    EXPECT_EQ(Table().CountOf("note1999"), 1) << "a long note goes on overleaf";
}

TEST_F(ReportTest, QualityIsASheetThatLeavesRoomForTheSignatureOrGoesOnUnderItsHeads) {
    const auto calibrate = [&](std::vector<float> logC, std::vector<float> mv) {
        state.CaliPoints = static_cast<std::int16_t>(logC.size() - 1);
        state.CaliPpm.assign(logC.size(), 1);
        state.CaliLogC = std::move(logC);
        state.CaliE = std::move(mv);
        return MakeQualityPage(CalibrationOf(state), true);
    };
    const auto print = [](const QualityPage& quality, float from, bool room) {
        return Print([&](Sheets& page) {
            if (from > 0) page.MoveTo(0, from);
            PrintQuality(quality, page);
            EXPECT_TRUE(!room || page.CurrentY() + 4 * 24 * 12 <= page.Height());
        });
    };
    QualityPage quality = calibrate({0, -5, -4, -3, -2}, {0, 162.3f, 103.7f, 45.7f, -11.7f});
    const Printout out = print(quality, 0, true);
    for (const char* const part :
         {"Calibration Quality\ngood: the slope is 98.0 %", "What to do: Go on", "± 0.19 mV/decade",
          "No.  ppm    LogC    mV      Fitted mV", "4    190    -2.000  -11.70  -12.00"})
        EXPECT_NE(out.Text().find(part), std::string::npos) << part << "\n" << out.Text();
    EXPECT_EQ(Joined(out.pictures, out.pages), "1|1");
    EXPECT_EQ(print(quality, 9000, false).pages, 2) << "what no longer fits goes on";
    // Ten standards, of which some are bad: all its causes, and a row for each.
    EXPECT_EQ(print(calibrate({0, -6, -5.5, -5, -4.5, -4, -3.5, -3, -2.5, -2, -1.5},
                              {0, 130, 128, 110, 96, 80, 66, 50, 36, 24, 2}),
                    0, true)
                  .pages,
              1);
    quality.rows.resize(244, quality.rows[0]);
    const Printout many = print(quality, 0, false);
    EXPECT_GT(many.pages, 2);
    EXPECT_EQ(many.CountOf("No.  ppm"), many.pages);
}

// 1.6 million characters were once walked through again for every line.
TEST_F(ReportTest, AVeryLongCellIsCutInOneWalk) {
    const std::string text(400'000, 'x');
    EXPECT_EQ(Wrapped(text, 5).size(), 80'000u);
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"", {""}},
        {"abcde", {"abcde"}},
        {"abcdef", {"abcde", "f"}},
        {"ab cdef", {"ab", "cdef"}},
        {"µµµµµµ", {"µµµµµ", "µ"}},
        {"abcde ", {"abcde", ""}},
    };
    for (const auto& [cell, lines] : rows)
        EXPECT_EQ(Wrapped(cell, 5), lines) << cell;
    EXPECT_EQ(Ends("/home/µ/RUN.TAB", 9), "/ho...TAB");
}

class Impatient : public Progress {
 public:
    int calls = 0, cancelAt = -1, last = 0, most = 0;
    bool At(int done, int total) override {
        if (total > 0) {
            EXPECT_GE(done, last);
            EXPECT_LE(done, total);
            last = done;
        }
        return ++calls != cancelAt;
    }
};

TEST_F(ReportTest, ALongPrintAsksFirstTellsHowFarItIsAndCanBeCancelled) {
    FakePrinting printing;
    Impatient patience;
    const PrintServices services{printing, prompts, clock, patience};
    printing.file = folder / "A.pdf";
    const auto fill = [&](int rows) {
        logic.FillRows(std::vector<std::string>(static_cast<std::size_t>(rows), "1\ta\t09:05"));
    };
    // A sheet holds 65 rows of 216 twips below its head (756) and the column heads (288), the first one 35 below the
    // head of the table (6508) besides.
    fill(35 + 49 * 65 - 10);
    ASSERT_TRUE(PrintTableDocument(state, table, true, services)) << "fifty sheets ask nothing";
    EXPECT_EQ(printing.out.pages, 50);
    EXPECT_EQ(state.StatusMessage, "Printed to " + folder / "A.pdf.");
    EXPECT_GT(patience.calls, 6000) << "at each row, counted and printed";

    printing.out = {};
    fill(35 + 49 * 65 + 1);
    prompts.ExpectAsk("This report has 51 sheets. Print them all?", false);
    EXPECT_FALSE(PrintTableDocument(state, table, true, services));
    EXPECT_TRUE(prompts.lastDefaultNo && printing.out.lines.empty());

    patience.calls = patience.last = 0;
    patience.cancelAt = 60;
    EXPECT_FALSE(PrintTableDocument(state, table, true, services));
    EXPECT_EQ(state.StatusMessage, "The print was cancelled.");
    EXPECT_FALSE(printing.out.ended);
}

}  // namespace
}  // namespace kelvo::test
