#pragma once

#include <QBuffer>
#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <memory>
#include <optional>

#include "core/StateOf.h"
#include "tables/PageWriter.h"

class QPagedPaintDevice;

namespace kelvo {

class FileChooser;
class Prompts;

/// Prints on a printer, or builds a PDF in memory that replaces the chosen file in one step at the end. Everything is
/// drawn as vectors, so that the text of a page can be searched and copied.
class PageWriterQt : public PageWriter {
 public:
    /// On a device that is ready to print, its margins set.
    explicit PageWriterQt(std::unique_ptr<QPagedPaintDevice> device);
    /// Into a PDF file. @throws RuntimeError 57 when no page can be begun.
    PageWriterQt(const std::string& file, const std::string& title, const QPageSize& size);
    ~PageWriterQt() override;

    float Width() const override { return width_; }
    float Height() const override { return height_; }
    float TextWidth(const std::string& text) const override;
    float LineHeight() const override;
    void Draw(const DisplayList& picture, float width, float height) override;
    void NewPage() override;
    void EndDocument() override;
    std::string FileName() const override { return file_; }

 protected:
    void DrawText(float x, float y, const std::string& text) override;

 private:
    void Begin();
    struct Letters {
        float points;
        QFont font;
        QFontMetricsF metrics;
    };
    /// Letters of the current size, made once for many lines.
    const Letters& Font() const;

    std::string file_;
    QBuffer bytes_;
    std::unique_ptr<QPagedPaintDevice> device_;
    QPainter painter_;
    mutable std::optional<Letters> letters_;
    float width_ = 0, height_ = 0;
};

/// Pages go to the default printer, and where the machine has none to a PDF file that the analyst chooses.
class PrintingQt : public Printing {
 public:
    PrintingQt(const Paths& paths, Prompts& prompts, FileChooser& files)
        : paths_(paths), prompts_(prompts), files_(files) {}

    int PrinterReady(int code) override;
    std::unique_ptr<PageWriter> Begin(const std::string& title) override;

    /// Page of the country's usual size unless set.
    QPageSize pageSize;

 private:
    std::string AskFile(const std::string& title);

    const Paths& paths_;
    Prompts& prompts_;
    FileChooser& files_;
};

}  // namespace kelvo
