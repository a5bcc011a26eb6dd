#include "help/PictureInText.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextDocument>

#include "help/Illustrations.h"
#include "kit/PictureView.h"

namespace kelvo {

QSizeF PictureInText::intrinsicSize(QTextDocument* document, int, const QTextFormat& format) {
    // A page has several times the dots of a display, and the layout counts in dots.
    constexpr double PixelsAnInch = 96;
    const QPaintDevice* device = document->documentLayout()->paintDevice();
    const double dots = device == nullptr ? 1 : device->logicalDpiX() / PixelsAnInch;
    const double width = dots * format.doubleProperty(WidthProperty);
    return {width, width * double{IllustrationHeight} / double{IllustrationWidth}};
}

void PictureInText::drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int, const QTextFormat&) {
    painter->save();
    PaintPicture(*painter, place, picture_, IllustrationWidth, IllustrationHeight);
    painter->restore();
}

}  // namespace kelvo
