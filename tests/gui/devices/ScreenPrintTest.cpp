#include "devices/ScreenPrint.h"

#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

using ScreenPrintTest = ScreenFixture;

TEST_F(ScreenPrintTest, WithoutAPrinterThePageGoesIntoANamedFileOrTheFailureIsTold) {
    screens.Show(ScreenCode::frmtxt);
    Screen& screen = *Shown(ScreenCode::frmtxt);
    files.Expect(Path("page"));
    PrintScreen(context, screen, PrinterState::None);
    EXPECT_EQ(files.last.directory + files.last.initialName, Path("frmtxt.pdf"));
    const std::string first = Content("page.pdf");
    EXPECT_TRUE(first.starts_with("%PDF-"));
    EXPECT_NE(first.find("/Font"), std::string::npos) << "letters are letters of a font";
    EXPECT_NE(screen.StatusText().find("page.pdf"), std::string::npos);

    files.Expect(Path("page.pdf"));
    prompts.ExpectReplace(Path("page.pdf"), false);
    files.Expect(std::nullopt);
    PrintScreen(context, screen, PrinterState::None);
    EXPECT_EQ(Content("page.pdf"), first);
    EXPECT_TRUE(prompts.lastDefaultNo);

    const char* const failed = "Cannot print data, please check if the computer is connected to a printer.";
    files.Expect(Path("missing/page.pdf"));
    prompts.ExpectMessage(failed);
    PrintScreen(context, screen, PrinterState::None);
    prompts.ExpectMessage(
        "The printer is not ready, please check the connection, or if you use Printer/Interface switch box, make sure "
        "it is switched to the Printer");
    PrintScreen(context, screen, PrinterState::NotReady);
    // A network printer is not asked; here there is none, so the print itself fails.
    state.NetworkPrinter = 1;
    prompts.ExpectMessage(failed);
    PrintScreen(context, screen, PrinterState::NotReady);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace kelvo::test
