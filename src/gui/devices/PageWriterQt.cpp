#include "devices/PageWriterQt.h"
#include "core/SaveAndOpen.h"

#include <QLocale>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <cmath>

#include "core/Paths.h"
#include "devices/ScreenPrint.h"
#include "kit/PictureView.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double TwipsAnInch = 1440, TwipsAPoint = 20;
constexpr double MarginMillimetres = 15;
// Everything is laid out in twips and drawn as vectors, so the grid of the device does not matter.
constexpr int Resolution = 96;

QPageSize UsualSize() {
    const bool letter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageSize(letter ? QPageSize::Letter : QPageSize::A4);
}

QMarginsF Margins() {
    return {MarginMillimetres, MarginMillimetres, MarginMillimetres, MarginMillimetres};
}

/// The default printer of the machine, or its first one.
QPrinterInfo ChosenPrinter() {
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    const QList<QPrinterInfo> all = standard.isNull() ? QPrinterInfo::availablePrinters() : QList<QPrinterInfo>();
    return all.isEmpty() ? standard : all.front();
}

}  // namespace

PageWriterQt::PageWriterQt(std::unique_ptr<QPagedPaintDevice> device) : device_(std::move(device)) {
    Begin();
}

PageWriterQt::PageWriterQt(const std::string& file, const std::string& title, const QPageSize& size) : file_(file) {
    bytes_.open(QIODevice::WriteOnly);
    auto writer = std::make_unique<QPdfWriter>(&bytes_);
    writer->setResolution(Resolution);
    writer->setTitle(QString::fromStdString(title));
    writer->setCreator(QStringLiteral("Kelvo"));
    writer->setPageLayout(QPageLayout(size, QPageLayout::Portrait, Margins(), QPageLayout::Millimeter));
    device_ = std::move(writer);
    Begin();
}

PageWriterQt::~PageWriterQt() {
    // A document that was given up is not printed.
    if (auto* printer = dynamic_cast<QPrinter*>(device_.get()); printer != nullptr && painter_.isActive())
        printer->abort();
    if (painter_.isActive()) painter_.end();
}

void PageWriterQt::Begin() {
    if (!painter_.begin(device_.get())) throw RuntimeError(ErrorNumber::DeviceIo);
    const double scale = device_->logicalDpiX() / TwipsAnInch;
    painter_.scale(scale, scale);
    width_ = static_cast<float>(device_->width() / scale);
    height_ = static_cast<float>(device_->height() / scale);
}

const PageWriterQt::Letters& PageWriterQt::Font() const {
    if (letters_ && letters_->points == Points()) return *letters_;
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(double{Points()} * TwipsAPoint))));
    letters_.emplace(Letters{Points(), font, QFontMetricsF(font)});
    return *letters_;
}

float PageWriterQt::TextWidth(const std::string& text) const {
    return static_cast<float>(Font().metrics.horizontalAdvance(QString::fromStdString(text)));
}

float PageWriterQt::LineHeight() const {
    return static_cast<float>(Font().metrics.lineSpacing());
}

void PageWriterQt::DrawText(float x, float y, const std::string& text) {
    const Letters& letters = Font();
    painter_.setFont(letters.font);
    painter_.setPen(Qt::black);
    painter_.drawText(QPointF(double{x}, double{y} + letters.metrics.ascent()), QString::fromStdString(text));
}

void PageWriterQt::Draw(const DisplayList& picture, float width, float height) {
    const double scale = std::min(1.0, double{Width() - CurrentX()} / double{width});
    painter_.save();
    painter_.setFont(Font().font);
    PaintPicture(painter_,
                 QRectF(double{CurrentX()}, double{CurrentY()}, double{width} * scale, double{height} * scale), picture,
                 width, height);
    painter_.restore();
}

void PageWriterQt::NewPage() {
    if (!device_->newPage()) throw RuntimeError(ErrorNumber::DeviceIo);
    MoveTo(0, 0);
}

void PageWriterQt::EndDocument() {
    const bool ended = painter_.end();
    const auto* printer = dynamic_cast<const QPrinter*>(device_.get());
    if (!ended || (printer != nullptr && printer->printerState() == QPrinter::Error))
        throw RuntimeError(ErrorNumber::DeviceIo);
    if (file_.empty()) return;
    const QByteArray& pdf = bytes_.data();
    ReplaceWholeFile(file_, {pdf.constData(), static_cast<std::size_t>(pdf.size())});
}

int PrintingQt::PrinterReady(int) {
    // A machine without a printer prints to a file, which is always ready.
    return SystemPrinter() == PrinterState::NotReady ? 0 : 1;
}

std::string PrintingQt::AskFile(const std::string& title) {
    const auto name = AskNameToSave(
        prompts_, files_, {.dialog = {"PDF(*.pdf)|*.pdf", paths_.DataPath, title + ".pdf"}, .ending = ".pdf"});
    return name ? FindFile(*name) : std::string();
}

std::unique_ptr<PageWriter> PrintingQt::Begin(const std::string& title) {
    const QPrinterInfo info = ChosenPrinter();
    if (info.isNull()) {
        const std::string file = AskFile(title);
        if (file.empty()) return nullptr;
        return std::make_unique<PageWriterQt>(file, title, pageSize.isValid() ? pageSize : UsualSize());
    }
    auto printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    printer->setDocName(QString::fromStdString(title));
    printer->setPageMargins(Margins(), QPageLayout::Millimeter);
    if (pageSize.isValid()) printer->setPageSize(pageSize);
    return std::make_unique<PageWriterQt>(std::move(printer));
}

}  // namespace kelvo
