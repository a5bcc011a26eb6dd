#include "devices/PageWriterQt.h"

#include "devices/ScreenPrint.h"
#include "tables/Reports.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

using PageWriterQtTest = TableTest;

TEST_F(PageWriterQtTest, AsksBeforeItReplacesAndLeavesTheOldFileOnFailure) {
    if (SystemPrinter() != PrinterState::None) GTEST_SKIP();
    PrintingQt printing(state, prompts, files);
    Progress progress;
    printing.pageSize = QPageSize(QPageSize::A4);
    logic.Load();
    folder.Put("OLD.pdf", "old");
    files.Expect(folder / "OLD.pdf");
    prompts.ExpectReplace(folder / "OLD.pdf", false);
    files.Expect(std::nullopt);
    EXPECT_FALSE(logic.Print(printing, progress));
    EXPECT_EQ(folder.Get("OLD.pdf"), "old");
    files.Expect(folder / "no/A.pdf");
    prompts.ExpectMessage("Error76Saving" + folder / "no/A.pdf" + ":Path not found.");
    EXPECT_FALSE(logic.Print(printing, progress));
    files.Expect(folder / "OLD.pdf");
    prompts.ExpectReplace(folder / "OLD.pdf", true);
    EXPECT_TRUE(logic.Print(printing, progress));
    EXPECT_EQ(folder.Get("OLD.pdf").substr(0, 5), "%PDF-");
}

TEST_F(PageWriterQtTest, LettersAreOfOneWidthSoThatFieldsStandUnderEachOther) {
    PageWriterQt page(folder / "a.pdf", "a", QPageSize(QPageSize::A4));
    for (const float points : {6.0f, 9.25f, 18.0f}) {
        page.FontSize(points);
        const float one = page.TextWidth("0");
        for (const char* letter : {"W", "°", "µ"})
            EXPECT_NEAR(page.TextWidth(letter), one, 0.01);
        EXPECT_NEAR(page.TextWidth(std::string(100, 'x')), 100 * one, 1);
    }
    // 180 × 267 mm at 1440 twips an inch; the device rounds to its own points.
    EXPECT_NEAR(page.Width(), 10205, 20);
    EXPECT_NEAR(page.Height(), 15137, 20);
}

}  // namespace
}  // namespace kelvo::test
