#include "ph/RecordingExport.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPainter>

#include "core/DisplayListSvg.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StatusMessages.h"
#include "kit/PictureView.h"
#include "tables/PrintedPage.h"
#include "tables/Reports.h"
#include "tables/TablePresenter.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double PixelsATwip = 3.0 / 15;

QImage GraphImage(const DisplayList& graph) {
    QImage image(QSizeF(recording::Width * PixelsATwip, recording::Height * PixelsATwip).toSize(),
                 QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPicture(painter, QRectF(image.rect()), graph, recording::Width, recording::Height);
    return image;
}

QByteArray PngBytes(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

std::string GraphSvg(const RecordingPresenter& recording) {
    return DisplayListSvg(recording.Graph(), recording::Width, recording::Height, recording.PrintTitle());
}

/// Asks for a name and, before it replaces a file, for leave; then writes.
void SaveAs(AppContext& context, const RecordingPresenter& recording, const char* filter, const char* extension,
            std::string_view bytes) {
    const auto name =
        AskNameToSave(context.prompts, context.files,
                      {.dialog = {filter, context.state.Get<Paths>().DataPath, recording.PictureName() + extension},
                       .ending = extension});
    if (name && TakeFileStep(context.prompts, "Saving", *name, [&] { ReplaceWholeFile(*name, bytes); }))
        context.state.Get<StatusMessages>().StatusMessage = "The graph has been exported to " + LastPart(*name) + ".";
}

}  // namespace

void SaveGraphAsPng(AppContext& context, const RecordingPresenter& recording) {
    const QByteArray bytes = PngBytes(GraphImage(recording.Graph()));
    SaveAs(context, recording, "PNG(*.png)|*.png", ".png", {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

void SaveGraphAsSvg(AppContext& context, const RecordingPresenter& recording) {
    SaveAs(context, recording, "SVG(*.svg)|*.svg", ".svg", GraphSvg(recording));
}

void CopyGraph(const RecordingPresenter& recording) {
    auto* data = new QMimeData;
    data->setImageData(GraphImage(recording.Graph()));
    data->setData(QStringLiteral("image/svg+xml"), QByteArray::fromStdString(GraphSvg(recording)));
    QGuiApplication::clipboard()->setMimeData(data);
}

void PrintRecordingGraph(AppContext& context, const RecordingPresenter& recording) {
    if (context.printing == nullptr) return;
    Progress none;
    RunPrint(context.state, {*context.printing, context.prompts, context.clock, none}, recording.PrintTitle(),
             context.table.PrintedFile(), GraphNotPrinted, [&recording](Sheets& page) {
                 page.FontSize(14);
                 page.Print(recording.PrintTitle());
                 const float top = page.CurrentY() + page.LineHeight();
                 const float scale = std::min(1.0f, page.Width() / recording::Width);
                 page.MoveTo(0, top);
                 page.Draw(recording.Graph(), recording::Width, recording::Height);
                 page.FontSize(10);
                 page.MoveTo(0, top + recording::Height * scale + page.LineHeight());
                 for (const std::string& line : recording.LastValues())
                     page.Print(line);
                 PrintSignature(page);
             });
}

}  // namespace kelvo
