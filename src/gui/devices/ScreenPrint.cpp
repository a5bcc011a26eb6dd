#include "devices/ScreenPrint.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Messages.h"

#include <QtPrintSupport>
#include <QtWidgets>
#include <functional>

#include "core/HardwareSettings.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "kit/Screen.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr const char* FailedText = "Cannot print data, please check if the computer is connected to a printer.";

constexpr double TitlePoints = 12, MarginMm = 15;

QPrinterInfo ChosenPrinter() {
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    if (!standard.isNull()) return standard;
    const auto all = QPrinterInfo::availablePrinters();
    return all.isEmpty() ? QPrinterInfo() : all.front();
}

/// Letters and grounds for paper, laid over a dark theme.
constexpr const char* PaperSheet = R"(
QWidget { color: #000000; }
QLineEdit[readOnly="true"], QLineEdit:disabled { background: #efefef; color: #000000; border: 1px solid #b0b0b0; }
QComboBox, QPushButton { background: #ffffff; color: #000000; border: 1px solid #808080; border-radius: 3px; }
)";

/// Paper is white: while it lives, a window of a dark theme has dark letters on light grounds. (A palette does not
/// reach boxes under a style sheet.) Nothing is painted on the display meanwhile, since the event loop does not run.
class PaperColours {
 public:
    explicit PaperColours(QWidget& window) : window_(window), sheet_(window.styleSheet()) {
        const QPalette& palette = window.palette();
        dark_ = palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
        if (dark_) window_.setStyleSheet(sheet_ + QString::fromLatin1(PaperSheet));
    }
    ~PaperColours() {
        if (dark_) window_.setStyleSheet(sheet_);
    }
    PaperColours(const PaperColours&) = delete;
    PaperColours& operator=(const PaperColours&) = delete;

 private:
    QWidget& window_;
    QString sheet_;
    bool dark_ = false;
};

/// The part of a window below its menu bar.
QRect Content(const QWidget& window) {
    QRect content = window.rect();
    if (const auto* menus = window.layout() == nullptr ? nullptr : window.layout()->menuBar())
        content.setTop(menus->geometry().bottom() + 1);
    return content;
}

QPageLayout LayoutFor(const QWidget& window) {
    const QRect content = Content(window);
    const auto way = content.width() > content.height() ? QPageLayout::Landscape : QPageLayout::Portrait;
    return {QPageSize(QPageSize::A4), way, QMarginsF(MarginMm, MarginMm, MarginMm, MarginMm), QPageLayout::Millimeter};
}

bool ToPrinter(QWidget& window, const QString& stamp, const QString& title) {
    QPrinter printer(ChosenPrinter(), QPrinter::HighResolution);
    printer.setPageLayout(LayoutFor(window));
    printer.setDocName(window.windowTitle());
    return printer.isValid() && DrawScreen(window, stamp, printer, title);
}

/// Name for the PDF file, none when the analyst gives up.
std::optional<std::string> AskName(AppContext& context, const QWidget& window) {
    return AskNameToSave(
        context.prompts, context.files,
        {.dialog = {"PDF(*.pdf)|*.pdf", context.state.Get<Paths>().DataPath, FromQt(window.objectName()) + ".pdf"},
         .ending = ".pdf"});
}

/// @param bytes of the PDF file, empty on failure
/// @return whether the print has been made or given up by the analyst
bool ToPdf(AppContext& context, Screen& screen, const std::function<QByteArray()>& make) {
    const auto name = AskName(context, screen);
    if (!name) return true;
    const QByteArray bytes = make();
    if (bytes.isEmpty()) return false;
    try {
        ReplaceWholeFile(FindFile(*name), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    } catch (const RuntimeError&) {
        return false;
    }
    screen.SetStatus("Printed to " + *name);
    return true;
}

/// What every print has in common: the printer check, the printer or a PDF file, the word about a failure.
void PrintBy(AppContext& context, Screen& screen, PrinterState printer, const std::function<bool()>& onPrinter,
             const std::function<QByteArray()>& asPdf) {
    if (printer == PrinterState::NotReady && context.state.Get<HardwareSettings>().NetworkPrinter == 0)
        return context.prompts.Message(PrinterNotReady);
    bool done = false;
    if (printer == PrinterState::None) {
        done = ToPdf(context, screen, asPdf);
    } else {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        done = onPrinter();
        QGuiApplication::restoreOverrideCursor();
    }
    if (!done) context.prompts.Message(FailedText);
}

QPageLayout PortraitPage() {
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(MarginMm, MarginMm, MarginMm, MarginMm),
            QPageLayout::Millimeter};
}

bool TextToPrinter(const QTextDocument& text, const QString& title) {
    QPrinter printer(ChosenPrinter(), QPrinter::HighResolution);
    printer.setPageLayout(PortraitPage());
    printer.setDocName(title);
    if (!printer.isValid()) return false;
    text.print(&printer);
    return printer.printerState() != QPrinter::Error;
}

QByteArray TextAsPdf(const QTextDocument& text, const QString& title) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageLayout(PortraitPage());
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("Kelvo"));
    text.print(&writer);
    return bytes;
}

}  // namespace

PrinterState SystemPrinter() {
    const QPrinterInfo printer = ChosenPrinter();
    if (printer.isNull()) return PrinterState::None;
    return printer.state() == QPrinter::Error || printer.state() == QPrinter::Aborted ? PrinterState::NotReady
                                                                                      : PrinterState::Ready;
}

void PrintScreen(AppContext& context, Screen& screen, PrinterState printer, const QString& title) {
    const QString stamp = ToQt(DateTimeText(context.clock.Now(), context.state.Get<HardwareSettings>().DateFormat));
    PrintBy(
        context, screen, printer, [&] { return ToPrinter(screen, stamp, title); },
        [&] { return ScreenAsPdf(screen, stamp, title); });
}

void PrintText(AppContext& context, Screen& screen, const QTextDocument& text, PrinterState printer) {
    const QString title = screen.windowTitle().trimmed();
    PrintBy(
        context, screen, printer, [&] { return TextToPrinter(text, title); }, [&] { return TextAsPdf(text, title); });
}

void PrintScreenGraph(AppContext& context, Screen& screen, PrinterState printer) {
    PrintScreen(context, screen, printer, QStringLiteral("Electrode Potential"));
}

bool DrawScreen(QWidget& window, const QString& stamp, QPaintDevice& page, const QString& title) {
    const PaperColours colours(window);
    QPainter painter;
    if (!painter.begin(&page)) return false;
    const QRectF sheet(0, 0, page.width(), page.height());
    QFont font = window.font();
    font.setPointSizeF(TitlePoints);
    painter.setFont(font);
    const double titleHeight = painter.fontMetrics().height() * 2;
    const QRectF head(0, 0, sheet.width(), titleHeight);
    painter.drawText(head, Qt::AlignLeft | Qt::AlignTop, title.isEmpty() ? window.windowTitle() : title);
    painter.drawText(head, Qt::AlignRight | Qt::AlignTop, stamp);

    const QRect content = Content(window);
    const double scale =
        std::min(sheet.width() / content.width(), (sheet.height() - titleHeight) / std::max(1, content.height()));
    painter.translate((sheet.width() - content.width() * scale) / 2, titleHeight);
    painter.scale(scale, scale);
    window.render(&painter, QPoint(), QRegion(content), QWidget::DrawChildren);
    return painter.end();
}

QByteArray ScreenAsPdf(QWidget& window, const QString& stamp, const QString& title) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageLayout(LayoutFor(window));
    writer.setTitle(window.windowTitle());
    writer.setCreator(QStringLiteral("Kelvo"));
    return DrawScreen(window, stamp, writer, title) ? bytes : QByteArray();
}

}  // namespace kelvo
