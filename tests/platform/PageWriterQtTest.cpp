#include "platform/PageWriterQt.h"

#include "calibration/CaliGraph.h"
#include "platform/ScreenPrint.h"
#include "tables/Reports.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// Text of a PDF as its reader sees it, runs of blanks and lines made one blank.
std::string TextOf(const std::string& pdf) {
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"),
                 {QStringLiteral("-layout"), QString::fromStdString(pdf), QStringLiteral("-")});
    if (!reader.waitForFinished(30000)) return {};
    return QString::fromUtf8(reader.readAllStandardOutput()).simplified().toStdString();
}

bool Available(const char* tool) {
    return !QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty();
}

class PageWriterQtTest : public TableTest {
 protected:
    PageWriterQtTest() : printing(state, prompts, files) {
        printer = SystemPrinter() != PrinterState::None;
        printing.pageSize = QPageSize(QPageSize::A4);
        state.LinearFit = 1;
        state.CaliEo = 115;
        state.MvScaleIndex = 2;
        state.LogCScaleIndex = 2;
        SetScaleConstants(state, 2, 2);
    }
    PrintingQt printing;
    bool printer = false;
};

TEST_F(PageWriterQtTest, WithoutAPrinterThePagesGoToAChosenFile) {
    if (printer || !Available("pdftotext")) GTEST_SKIP();
    AddSamples();
    state.SampleCount = 1;
    state.SampleE[0] = -150.2f;
    state.SampleLogC[0] = -4.5f;
    files.Expect(folder / "report");
    ASSERT_TRUE(PrintGraph(state, table, clock, printing, prompts, true));
    EXPECT_EQ(files.last.filter, "PDF(*.pdf)|*.pdf");
    const std::string text = TextOf(folder / "report.pdf");
    for (const char* part : {"E (mV)", "LogC", "(F)", "Operator Name: Ann Lee", "Calibration Data:", "59.00",
                             "ISE Sample Data Table", "Page 1", "Brook µ°", "Tap 1"})
        EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
    EXPECT_EQ(folder.Get("report.pdf").find("/Subtype /Image"), std::string::npos) << "all of it is vectors";
}

TEST_F(PageWriterQtTest, AsksBeforeItReplacesAndLeavesTheOldFileOnFailure) {
    if (printer) GTEST_SKIP();
    logic.Load();
    folder.Put("OLD.pdf", "old");
    const std::string question = "   This file already exists, would you like to replace it?";
    files.Expect(folder / "OLD.pdf");
    prompts.ExpectAsk(folder / "OLD.pdf" + question, false);
    files.Expect(std::nullopt);
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    EXPECT_EQ(folder.Get("OLD.pdf"), "old");
    files.Expect(folder / "no/A.pdf");
    prompts.ExpectMessage("Error76Saving" + folder / "no/A.pdf" + ":Path not found.");
    EXPECT_FALSE(PrintTableDocument(state, table, printing, prompts));
    files.Expect(folder / "OLD.pdf");
    prompts.ExpectAsk(folder / "OLD.pdf" + question, true);
    EXPECT_TRUE(PrintTableDocument(state, table, printing, prompts));
    EXPECT_EQ(folder.Get("OLD.pdf").substr(0, 5), "%PDF-");
}

TEST_F(PageWriterQtTest, LettersAreOfOneWidthSoThatFieldsStandUnderEachOther) {
    PageWriterQt page(folder / "a.pdf", "a", QPageSize(QPageSize::A4));
    for (const float points : {6.0f, 9.25f, 10.0f, 12.0f, 18.0f}) {
        page.FontSize(points);
        const float one = page.TextWidth("0");
        EXPECT_NEAR(page.TextWidth("W"), one, 0.01);
        EXPECT_NEAR(page.TextWidth("°"), one, 0.01);
        EXPECT_NEAR(page.TextWidth("µ"), one, 0.01);
        EXPECT_NEAR(page.TextWidth(std::string(100, 'x')), 100 * one, 1);
    }
    // 180 × 267 mm at 1440 twips an inch; the device rounds to its own points.
    EXPECT_NEAR(page.Width(), 10205, 20);
    EXPECT_NEAR(page.Height(), 15137, 20);
}

}  // namespace
}  // namespace kelvo::test
