#pragma once

#include <memory>
#include <string>

#include "core/DisplayList.h"

namespace kelvo {

/// A page to print on, with a current position and a current font size, in twips (1440 an inch) from the top left
/// corner of what the margins leave. Letters are of one width, so that fields of characters stand under each other.
///
/// A failure of the device is a RuntimeError.
class PageWriter {
 public:
    virtual ~PageWriter() = default;

    virtual float Width() const = 0;
    virtual float Height() const = 0;
    virtual float TextWidth(const std::string& text) const = 0;  ///< at the current font size
    virtual float LineHeight() const = 0;                        ///< at the current font size

    void FontSize(float points) { points_ = points; }
    float Points() const { return points_; }
    void MoveTo(float x, float y) { x_ = x, y_ = y; }
    float CurrentX() const { return x_; }
    float CurrentY() const { return y_; }

    /// Prints a text at the position, which goes to the left edge of the line below.
    void Print(const std::string& text) {
        DrawText(x_, y_, text);
        MoveTo(0, y_ + LineHeight());
    }
    /// Draws a picture whose surface is `width` × `height` twips into the page, its top left corner at the position.
    virtual void Draw(const DisplayList& picture, float width, float height) = 0;
    virtual void NewPage() = 0;
    /// Ends the document and hands it over.
    virtual void EndDocument() = 0;
    /// The file that the document goes to, empty for a printer.
    virtual std::string FileName() const { return {}; }

 protected:
    virtual void DrawText(float x, float y, const std::string& text) = 0;

 private:
    float points_ = 12, x_ = 0, y_ = 0;
};

/// The way to a printer, or to a file where there is none.
class Printing {
 public:
    virtual ~Printing() = default;
    /// 1 when ready. @param code 1 the printer
    virtual int PrinterReady(int code) = 0;
    /// Begins a document; null when the analyst chose no file. @throws RuntimeError when the device fails.
    virtual std::unique_ptr<PageWriter> Begin(const std::string& title) = 0;
};

}  // namespace kelvo
