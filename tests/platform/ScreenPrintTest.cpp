#include "platform/ScreenPrint.h"

#include <fstream>

#include "support/Stage.h"

namespace kelvo::test {
namespace {

const char* const NotReady =
    "The printer is not ready, please check the connection, or if you use Printer/Interface switch box, make sure it "
    "is "
    "switched to the Printer";
const char* const Failed = "Cannot print data, please check if the computer is connected to a printer.";

class PlainScreen : public Screen {
 public:
    explicit PlainScreen(House& house) : Screen(house, ScreenCode::frmcnvs, "frmcnvs", Kind::Working) {
        setWindowTitle(QStringLiteral("Kelvo : Title"));
        AddMenu("mnuF", QStringLiteral("&File"));
        Body()->addWidget(new QLabel(QStringLiteral("Molarity")));
        resize(800, 500);
    }
};

class ScreenPrintTest : public Stage {
 protected:
    PlainScreen screen{house};
};

TEST_F(ScreenPrintTest, WithoutAPrinterThePageGoesIntoANamedFile) {
    files.Expect(Path("page"));
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_EQ(files.last.initialName, "frmcnvs.pdf");
    EXPECT_EQ(files.last.directory, folder.string() + "/");
    EXPECT_TRUE(Content("page.pdf").starts_with("%PDF-"));
    EXPECT_NE(Content("page.pdf").rfind("%%EOF"), std::string::npos);
    EXPECT_NE(screen.RemarkText().find("page.pdf"), std::string::npos);
}

TEST_F(ScreenPrintTest, AnExistingFileIsAskedFor) {
    const std::string name = Path("old.pdf");
    std::ofstream(name) << "old";
    files.Expect(name);
    prompts.ExpectAsk(name + "   This file already exists, would you like to replace it?", false);
    files.Expect(std::nullopt);
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_EQ(Content("old.pdf"), "old");
    EXPECT_TRUE(prompts.lastDefaultNo);

    files.Expect(name);
    prompts.ExpectAsk(name + "   This file already exists, would you like to replace it?", true);
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_TRUE(Content("old.pdf").starts_with("%PDF-"));
}

TEST_F(ScreenPrintTest, FailuresAreTold) {
    files.Expect(Path("missing/page.pdf"));
    prompts.ExpectMessage(Failed);
    PrintScreen(house, screen, PrinterState::None);

    prompts.ExpectMessage(NotReady);
    PrintScreen(house, screen, PrinterState::NotReady);

    // A network printer is not asked; here there is none, so the print itself fails.
    state.NetworkPrinter = 1;
    prompts.ExpectMessage(Failed);
    PrintScreen(house, screen, PrinterState::NotReady);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ScreenPrintTest, ADarkThemePrintsDarkLettersOnWhite) {
    const QPalette usual = QApplication::palette();
    QPalette dark(QColor(40, 40, 44));
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    PlainScreen night{house};
    QImage page(1600, 1000, QImage::Format_RGB32);
    page.fill(Qt::white);
    EXPECT_TRUE(DrawScreen(night, {}, page));
    EXPECT_TRUE(night.styleSheet().isEmpty());
    QApplication::setPalette(usual);

    int ink = 0, ground = 0;
    for (int y = page.height() / 4; y < page.height() * 3 / 4; ++y) {
        for (int x = 0; x < page.width(); ++x) {
            const int light = qGray(page.pixel(x, y));
            if (light < 100) ++ink;
            if (light > 230) ++ground;
        }
    }
    EXPECT_GT(ink, 100);
    EXPECT_GT(ground, page.width() * page.height() / 2 * 9 / 10);
}

TEST_F(ScreenPrintTest, LettersAreLettersOfAFont) {
    const QByteArray pdf = ScreenAsPdf(screen, QStringLiteral("24/11/2026 20:49"));
    EXPECT_TRUE(pdf.contains("/Type /Font") || pdf.contains("/Type/Font"));
}

}  // namespace
}  // namespace kelvo::test
