#include "tables/Reports.h"

#include <algorithm>

#include "calibration/CaliGraph.h"
#include "tables/PrintedPage.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// What a fake device printed; it outlives its page.
struct Printout {
    struct Line {
        int page;
        float x, y, points;
        std::string text;
    };
    std::vector<Line> lines;
    int pages = 1;
    int pictures = 0;
    bool ended = false;
    int failAtLine = -1;
};

/// Letters 0.6 of their size wide, lines 1.2 of it high: a page that holds 71 letters of 12 points across.
class FakePage : public PageWriter {
 public:
    FakePage(Printout& out, float width, float height, std::string file = {})
        : out_(out), width_(width), height_(height), file_(std::move(file)) {}
    float Width() const override { return width_; }
    float Height() const override { return height_; }
    float TextWidth(const std::string& text) const override {
        return static_cast<float>(Characters(text)) * Points() * 12;
    }
    float LineHeight() const override { return Points() * 24; }
    void Draw(const Picture& picture, float, float) override { out_.pictures += picture.Empty() ? 0 : 1; }
    void NewPage() override {
        ++out_.pages;
        MoveTo(0, 0);
    }
    void EndDocument() override { out_.ended = true; }
    std::string FileName() const override { return file_; }

 protected:
    void DrawText(float x, float y, const std::string& text) override {
        if (static_cast<int>(out_.lines.size()) == out_.failAtLine) throw RuntimeError(ErrorNumber::DeviceIo);
        EXPECT_LE(x + TextWidth(text), width_ + 0.5f) << "runs off the page: " << text;
        EXPECT_LE(y + LineHeight(), height_ + 0.5f) << "runs off the page: " << text;
        out_.lines.push_back({out_.pages, x, y, Points(), text});
    }

 private:
    Printout& out_;
    float width_, height_;
    std::string file_;
};

constexpr float A4Width = 10205, A4Height = 15137;  ///< 180 × 267 mm

class FakePrinting : public Printing {
 public:
    int ready = 1;
    int asked = 0;
    bool chosen = true;
    std::string file;
    Printout out;
    int PrinterReady(int code) override {
        EXPECT_EQ(code, 1);
        ++asked;
        return ready;
    }
    std::unique_ptr<PageWriter> Begin(const std::string&) override {
        if (!chosen) return nullptr;
        return std::make_unique<FakePage>(out, A4Width, A4Height, file);
    }
};

class ReportTest : public TableTest {
 protected:
    Printout Table(float width = A4Width, float height = A4Height) {
        Printout out;
        FakePage page(out, width, height);
        PrintTable(state, table, page, 400);
        return out;
    }
    static std::vector<std::string> Texts(const Printout& out) {
        std::vector<std::string> texts;
        for (const Printout::Line& line : out.lines)
            texts.push_back(line.text);
        return texts;
    }
    static int CountOf(const Printout& out, const std::string& part) {
        return static_cast<int>(std::count_if(out.lines.begin(), out.lines.end(), [&](const Printout::Line& line) {
            return line.text.find(part) != std::string::npos;
        }));
    }
};

TEST_F(ReportTest, SampleTableInFixedFields) {
    AddSamples();
    const Printout out = Table();
    const std::string rule(70, '=');
    const std::vector<std::string> expected = {
        "Page 1",
        "ISE Sample Data Table",
        rule,
        "Calibration Date/Time :   24/11/2026 08:30",
        "Reference Electrode:      Ag/AgCl R7",
        "Electrode serial number:  F123",
        "Calibration Standard (ppm): 1       10      10",
        "Calibration Value (mV):   -179.5  -120.5  -119",
        "Calibration Slopes:       59.00   N/A",
        "Operator Name:            Ann Lee",
        "Experiment Date:          24/11/2026",
        rule,
        "Number              Time        mV          ppm         mol/L       °C          pH",
        "Tap 1               09:05       -150.2      3.14        1.65E-4     25          7.5",
        "Brook µ°            09:07       -100        22.23       1.17E-3     25          7.5",
    };
    EXPECT_EQ(Texts(out), expected);
    EXPECT_NEAR(out.lines[0].x, A4Width - 6 * 144, 0.5) << "the page number stands at the right edge";
    EXPECT_EQ(out.lines[1].points, 18);
    EXPECT_EQ(out.lines[4].y - out.lines[3].y, 500) << "head lines step down by 500";
    EXPECT_EQ(out.lines[12].points, 9) << "92 letters fit the page at 9 points (9936 twips), not at 9.25 (10212)";
}

TEST_F(ReportTest, TitlesSectionsAndRulesByOwner) {
    struct Row {
        ScreenCode owner;
        int pHMode;
        const char* title;
        const char* section;
        char lastRule;
        const char* lastHead;
    };
    const Row rows[] = {
        {ScreenCode::fmISEcli, 0, "ISE Sample Data Table", "", '=', "pH"},
        {ScreenCode::frmDsply, -1, "pH Measurement", "pH Measurement Data:", '=', "Temp.2 °F"},
        {ScreenCode::frmPHMe, -1, "pH Continuous Recording", "pH Continuous Recording Data:", '=', "Temp.2 °F"},
        {ScreenCode::frmPHMe, 0, "ISE Continuous Recording", "ISE Continuous Recording Data:", '=', "pH"},
        {ScreenCode::frmSampa, 0, "Sample Addition Method", "", '_', "(mol/L)"},
        {ScreenCode::frmStanad01, 0, "Standard Addition Method", "", '_', "(mol/L)"},
    };
    CalibratePh();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.title);
        Own(row.owner, row.pHMode);
        logic.Load();
        const Printout out = Table();
        EXPECT_EQ(out.lines[1].text, row.title);
        EXPECT_EQ(CountOf(out, "Data:"), *row.section == '\0' ? 0 : 1);
        EXPECT_EQ(CountOf(out, row.section) > 0, true);
        EXPECT_EQ(CountOf(out, std::string(60, row.lastRule)), row.lastRule == '_' ? 1 : 2);
        EXPECT_TRUE(out.lines.back().text.ends_with(row.lastHead)) << "an empty table prints its heads and no row";
        logic.Unload();
    }
}

TEST_F(ReportTest, PhHeadNamesTheElectrodesThatHaveText) {
    CalibratePh();
    Own(ScreenCode::frmDsply, -1);
    logic.Load();
    const Printout out = Table();
    const std::vector<std::string> head = Texts(out);
    EXPECT_EQ(head[3], "Electrode 1 :             PH-1   23/11/2026 16:00");
    EXPECT_EQ(head[4], "Calibration Buffers (pH): 7, 4");
    EXPECT_EQ(head[5], "Calibration Value (mV):   0, 177(25°C)");
    EXPECT_EQ(CountOf(out, "Electrode 2 :"), 0);
}

TEST_F(ReportTest, AdditionHeadsStandInTwoLines) {
    const std::pair<ScreenCode, std::pair<const char*, const char*>> rows[] = {
        {ScreenCode::frmSampa,
         {"              Sample Sample Sample Standard   Standard   Standard   Standard   Standard+  Sample     Sample",
          "Number Time   (°C)   (°F)   (mL)   (mL)       (ppm)      (mol/L)    (mV)       Sample(mV) (ppm)      "
          "(mol/L)"}},
        {ScreenCode::frmStanad01,
         {"              Sample Sample Sample Standard   Standard   Standard   Sample     Sample+    Sample     Sample",
          "Number Time   (°C)   (°F)   (mL)   (mL)       (ppm)      (mol/L)    (mV)       Std.(mV)   (ppm)      "
          "(mol/L)"}}};
    for (const auto& [owner, heads] : rows) {
        Own(owner, 0);
        logic.Load();
        const std::vector<std::string> texts = Texts(Table());
        ASSERT_GE(texts.size(), 2u);
        EXPECT_EQ(texts[texts.size() - 2], heads.first);
        EXPECT_EQ(texts.back(), heads.second);
        logic.Unload();
    }
}

TEST_F(ReportTest, NothingRunsOffThePageAndNothingIsLeftOut) {
    // The fake page fails the test for any text beyond its edges.
    struct Size {
        const char* name;
        float width, height;
    };
    const Size sizes[] = {{"A4", A4Width, A4Height}, {"Letter", 10539, 14139}};
    Own(ScreenCode::frmStanad01, 0);
    const std::string longName = "Effluent of the third settling tank, taken below the weir at noon, filtered twice";
    logic.AddRow(" 1\t" + longName + "\t09:05\t25\t77\t100\t10\t1000\t5.26E-2\t-120.5\t-61.34\t10.00\t5.26E-4");
    logic.AddRow(
        " 2\t\t09:07\t-100.55\t-148.99\t999\t1000\t99999.99\t5.26E-10\t-999.99\t-499.99\t12345678.90\t1.2E-10");
    for (const Size& size : sizes) {
        SCOPED_TRACE(size.name);
        const Printout out = Table(size.width, size.height);
        std::string all;
        for (const Printout::Line& line : out.lines)
            all += line.text + " ";
        // A name that was wrapped stands in the first column of several lines.
        for (const char* word : {"Effluent", "settling", "noon,", "12345678.90"})
            EXPECT_NE(all.find(word), std::string::npos) << word;
        EXPECT_GE(out.lines.back().points, 6);
    }
}

TEST_F(ReportTest, EveryPageHasItsNumberAndTheHeads) {
    for (int i = 1; i <= 200; ++i)
        logic.AddRow(" " + std::to_string(i) + "\ts" + std::to_string(i) + "\t09:05\t-100\t22\t1E-3\t25\t77.0\t7.5");
    const Printout out = Table();
    EXPECT_GT(out.pages, 3);
    EXPECT_EQ(CountOf(out, "Page "), out.pages);
    EXPECT_EQ(CountOf(out, "Number   "), out.pages);
    EXPECT_EQ(CountOf(out, "ISE Sample Data Table"), 1);
    EXPECT_EQ(CountOf(out, "09:05"), 200);
    for (int page = 1; page <= out.pages; ++page)
        EXPECT_EQ(CountOf(out, "Page " + std::to_string(page)), 1) << page;
}

TEST_F(ReportTest, ARowWithoutASampleNumberShowsItsOwn) {
    logic.AddRow(" 1\t\t09:05\t-100\t22\t1E-3\t25\t77.0\t7.5");
    EXPECT_EQ(Table().lines.back().text.substr(0, 22), "1                   09");
}

TEST_F(ReportTest, Calibration) {
    state.FileOperator = "Bo";
    Printout out;
    FakePage page(out, A4Width, A4Height);
    page.MoveTo(0, 400);
    PrintCalibration(state, page);
    const std::string rule(70, '=');
    const std::vector<std::string> expected = {
        rule,
        "Calibration Operator:     Bo",
        "Calibration date and time: 24/11/2026 08:30",
        "Reference Electrode:      Ag/AgCl R7",
        "Electrode serial number:  F123",
        "Total Slope:              58.50",
        "°C:                       25",
        "°F:                       77.0",
        "Ion:                      F",
        "ISAB/Notes:               TISAB II",
        "",
        "Calibration Data:",
        "Number         mV             ppm            LogC           Partial Slope",
        "1              -179.5         1.00           -5.00",
        "2              -120.5         10.00          -4.00          59.00",
        "3              -119.0         10.00          -4.00",
        rule,
    };
    EXPECT_EQ(Texts(out), expected);
}

TEST_F(ReportTest, CalibrationGoesToANewPageWhenItsHeadDoesNotFit) {
    Printout out;
    FakePage page(out, A4Width, A4Height);
    page.MoveTo(0, 12000);
    PrintCalibration(state, page);
    EXPECT_EQ(out.pages, 2);
    EXPECT_EQ(out.lines.front().page, 2);
}

TEST_F(ReportTest, IseReportPrintsGraphSamplesCalibrationAndTable) {
    state.LinearFit = 1;
    state.CaliEo = 115;
    state.MvScaleIndex = 2;
    state.LogCScaleIndex = 2;
    SetScaleConstants(state, 2, 2);
    state.SampleCount = 2;
    state.SampleE = {-150.2f, -100};
    state.SampleLogC = {-4.5f, -4};
    AddSamples();
    Printout out;
    FakePage page(out, A4Width, A4Height);
    PrintIseReport(state, table, clock, page, true);
    EXPECT_EQ(out.pictures, 1);
    const std::vector<std::string> texts = Texts(out);
    // 10^-4.5 is 3.16E-5 mol/L, and 18.9984 g/mol make that 0.60 ppm; 10^-4 makes 1.90.
    const std::vector<std::string> start = {"Operator Name:            Ann Lee",
                                            "Experiment date and time: 24/11/2026 09:05",
                                            "Number         mV             LogC           mol/L          ppm",
                                            "1              -150.2         -4.50          3.16E-5        0.60",
                                            "2              -100.0         -4.00          1.00E-4        1.90"};
    EXPECT_TRUE(std::equal(start.begin(), start.end(), texts.begin())) << testing::PrintToString(texts);
    EXPECT_EQ(CountOf(out, "Calibration Operator:"), 1);
    EXPECT_EQ(CountOf(out, "ISE Sample Data Table"), 1);
    EXPECT_EQ(state.SampleCount, 2) << "printing stores no samples";

    Printout plain;
    FakePage second(plain, A4Width, A4Height);
    PrintIseReport(state, table, clock, second, false);
    EXPECT_EQ(CountOf(plain, "Experiment date"), 0);
    EXPECT_EQ(CountOf(plain, "ISE Sample Data Table"), 0);
}

TEST_F(ReportTest, PrinterCheckAndFailures) {
    const std::string notReady =
        "The printer is not ready, please check the connection, or if you use Printer/Interface switch box, make sure "
        "it is switched to the Printer";
    FakePrinting printing;
    logic.Load();
    printing.ready = 0;
    prompts.ExpectMessage(notReady);
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    EXPECT_FALSE(printing.out.ended);

    state.NetworkPrinter = 1;
    EXPECT_TRUE(PrintTableDocument(state, table, printing, prompts)) << "a network printer is not asked";
    EXPECT_EQ(printing.asked, 1);
    EXPECT_TRUE(printing.out.ended);

    printing.chosen = false;
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts)) << "no file chosen, nothing said";

    printing.chosen = true;
    printing.out.failAtLine = static_cast<int>(printing.out.lines.size());
    prompts.ExpectMessage("Cannot print data, please check if the computer is connected to a printer.");
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    prompts.ExpectMessage("The graph could not be printed.");
    EXPECT_FALSE(PrintGraph(state, table, clock, printing, prompts, false));
    printing.file = "/a/b.pdf";
    prompts.ExpectMessage("Error57Saving/a/b.pdf:Device I/O error.");
    EXPECT_FALSE(PrintGraph(state, table, clock, printing, prompts, false));
}

}  // namespace
}  // namespace kelvo::test
