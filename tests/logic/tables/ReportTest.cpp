#include "tables/Reports.h"

#include <algorithm>
#include <functional>

#include "calibration/CaliGraph.h"
#include "support/Joined.h"
#include "tables/PrintedPage.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// What a fake device printed; it outlives its page.
struct Printout {
    std::vector<std::string> lines;
    int pages = 1, pictures = 0, failAtLine = -1;
    float points = 0;  ///< of the last line
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
    void Draw(const DisplayList& picture, float, float) override { out_.pictures += picture.Empty() ? 0 : 1; }
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
        out_.points = Points();
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
    static Printout Print(const std::function<void(PageWriter&)>& print) {
        Printout out;
        FakePage page(out);
        print(page);
        return out;
    }
    Printout Table() {
        return Print([&](PageWriter& page) { PrintTable(state, table, page, 400); });
    }
    const std::string rule = std::string(70, '=') + "\n";
};

TEST_F(ReportTest, SampleTableInFixedFields) {
    AddSamples();
    logic.AddRow(" 3\t\t09:09\t-100\t22\t1E-3\t25\t77.0\t7.5");
    const Printout out = Table();
    EXPECT_EQ(out.Text(), "Page 1\nISE Sample Data Table\n" + rule +
                              "Calibration Date/Time :   24/11/2026 08:30\n"
                              "Reference Electrode:      Ag/AgCl R7\n"
                              "Electrode serial number:  F123\n"
                              "Calibration Standard (ppm): 1       10      10\n"
                              "Calibration Value (mV):   -179.5  -120.5  -119\n"
                              "Calibration Slopes:       59.00   N/A\n"
                              "Operator Name:            Ann Lee\n"
                              "Experiment Date:          24/11/2026\n" +
                              rule +
                              "Number              Time        mV          ppm         mol/L       °C          pH\n"
                              "Tap 1               09:05       -150.2      3.14        1.65E-4     25          7.5\n"
                              "Brook µ°            09:07       -100        22.23       1.17E-3     25          7.5\n"
                              "3                   09:09       -100        22          1E-3        25          7.5\n");
    EXPECT_EQ(out.points, 9) << "92 letters fit the page at 9 points (9936 twips), not at 9.25 (10212)";
}

TEST_F(ReportTest, TitlesSectionsAndHeadsByOwner) {
    const std::string heads = "Number Time   (°C)   (°F)   (mL)   (mL)       (ppm)      (mol/L)    (mV)       ";
    const struct {
        ScreenCode owner;
        int pHMode;
        std::string title, lastHead;
        char lastRule;
    } rows[] = {
        {ScreenCode::frmDsply, -1, "pH Measurement", "Temp.2 °F", '='},
        {ScreenCode::frmPHMe, -1, "pH Continuous Recording", "Temp.2 °F", '='},
        {ScreenCode::frmPHMe, 0, "ISE Continuous Recording", "pH", '='},
        {ScreenCode::frmSampa, 0, "Sample Addition Method", heads + "Sample(mV) (ppm)      (mol/L)", '_'},
        {ScreenCode::frmStanad01, 0, "Standard Addition Method", heads + "Std.(mV)   (ppm)      (mol/L)", '_'},
    };
    CalibratePh();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title);
        Own(row.owner, row.pHMode);
        logic.Load();
        const Printout out = Table();
        EXPECT_EQ(out.lines[1], row.title);
        EXPECT_EQ(out.CountOf(row.title + " Data:"), row.lastRule == '_' ? 0 : 1);
        EXPECT_EQ(out.CountOf(std::string(60, row.lastRule)), row.lastRule == '_' ? 1 : 2);
        EXPECT_TRUE(out.lines.back().ends_with(row.lastHead)) << "an empty table prints its heads and no row";
        EXPECT_EQ(out.CountOf("Electrode 1 :             PH-1   23/11/2026 16:00"), row.pHMode == 0 ? 0 : 1);
        EXPECT_EQ(out.CountOf("Calibration Value (mV):   0, 177(25°C)"), row.pHMode == 0 ? 0 : 1);
        EXPECT_EQ(out.CountOf("Electrode 2 :"), 0) << "it has no calibration";
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
    for (const char* word : {"Effluent", "filtered", "12345678.90"})
        EXPECT_EQ(out.CountOf(word), 100) << word;
    for (int page = 1; page <= out.pages; ++page)
        EXPECT_EQ(out.CountOf("Page " + std::to_string(page)), 1) << page;
}

TEST_F(ReportTest, Calibration) {
    state.FileOperator = "Bo";
    const Printout out = Print([&](PageWriter& page) {
        page.MoveTo(0, 12000);
        PrintCalibration(state, page);
    });
    EXPECT_EQ(out.pages, 2) << "the head would not fit below";
    EXPECT_EQ(out.Text(), rule +
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
                              rule);
}

TEST_F(ReportTest, IseReportPrintsGraphSamplesCalibrationAndTable) {
    SetScaleConstants(state, 2, 2);
    state.SampleCount = 2;
    state.SampleE = {-150.2f, -100};
    state.SampleLogC = {-4.5f, -4};
    AddSamples();
    const auto report = [&](bool samples) {
        return Print([&](PageWriter& page) { PrintIseReport(state, table, clock, page, samples); });
    };
    const Printout out = report(true);
    // 10^-4.5 is 3.16E-5 mol/L, and 18.9984 g/mol make that 0.60 ppm; 10^-4 makes 1.90.
    EXPECT_TRUE(
        out.Text().starts_with("Operator Name:            Ann Lee\n"
                               "Experiment date and time: 24/11/2026 09:05\n"
                               "Number         mV             LogC           mol/L          ppm\n"
                               "1              -150.2         -4.50          3.16E-5        0.60\n"
                               "2              -100.0         -4.00          1.00E-4        1.90\n"))
        << out.Text();
    EXPECT_EQ(Joined(out.pictures, out.CountOf("Calibration Operator:"), out.CountOf("ISE Sample Data Table"),
                     out.CountOf("Calibration Quality")),
              "2|1|1|1");
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
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    EXPECT_FALSE(printing.out.ended);
    state.NetworkPrinter = 1;
    EXPECT_TRUE(PrintTableDocument(state, table, printing, prompts)) << "a network printer is not asked";
    EXPECT_TRUE(printing.out.ended);

    printing.out.failAtLine = static_cast<int>(printing.out.lines.size());
    prompts.ExpectMessage("Cannot print data, please check if the computer is connected to a printer.");
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    printing.file = "/a/b.pdf";
    prompts.ExpectMessage("Error57Saving/a/b.pdf:Device I/O error.");
    EXPECT_FALSE(PrintGraph(state, table, clock, printing, prompts, false));
}

}  // namespace
}  // namespace kelvo::test
