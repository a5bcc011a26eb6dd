#include "platform/ScreenPrint.h"

#include <gtest/gtest.h>

#include <QtWidgets>

#include "platform/Desk.h"
#include "platform/Screen.h"
#include "support/Scripted.h"

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

class ScreenPrintTest : public testing::Test {
 protected:
    void SetUp() override { state.DataPath = folder.path().toStdString() + "/"; }
    QByteArray Content(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    Desk desk{state};
    House house{state, prompts, files, clock, desk};
    PlainScreen screen{house};
};

TEST_F(ScreenPrintTest, WithoutAPrinterThePageGoesIntoANamedFile) {
    files.Expect(folder.filePath("page").toStdString());
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_EQ(files.last.initialName, "frmcnvs.pdf");
    EXPECT_EQ(files.last.directory, state.DataPath);
    EXPECT_TRUE(Content("page.pdf").startsWith("%PDF-"));
    EXPECT_TRUE(Content("page.pdf").trimmed().endsWith("%%EOF"));
    EXPECT_NE(screen.RemarkText().find("page.pdf"), std::string::npos);
}

TEST_F(ScreenPrintTest, AnExistingFileIsAskedFor) {
    QFile old(folder.filePath("old.pdf"));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    const std::string name = folder.filePath("old.pdf").toStdString();
    files.Expect(name);
    prompts.ExpectAsk(name + "   This file already exists, would you like to replace it?", false);
    files.Expect(std::nullopt);
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_EQ(Content("old.pdf"), "old");
    EXPECT_TRUE(prompts.lastDefaultNo);

    files.Expect(name);
    prompts.ExpectAsk(name + "   This file already exists, would you like to replace it?", true);
    PrintScreen(house, screen, PrinterState::None);
    EXPECT_TRUE(Content("old.pdf").startsWith("%PDF-"));
}

TEST_F(ScreenPrintTest, FailuresAreTold) {
    files.Expect(folder.filePath("missing/page.pdf").toStdString());
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

TEST_F(ScreenPrintTest, LettersAreLettersOfAFont) {
    const QByteArray pdf = ScreenAsPdf(screen, QStringLiteral("24/11/2026 20:49"));
    EXPECT_TRUE(pdf.contains("/Type /Font") || pdf.contains("/Type/Font"));
}

}  // namespace
}  // namespace kelvo::test
