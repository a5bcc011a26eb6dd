#include "help/PictureInText.h"

#include <QPainter>

#include "help/Illustrations.h"
#include "kit/PictureView.h"

namespace kelvo {

QSizeF PictureInText::intrinsicSize(QTextDocument*, int, const QTextFormat& format) {
    const double width = format.doubleProperty(WidthProperty);
    return {width, width * double{IllustrationHeight} / double{IllustrationWidth}};
}

void PictureInText::drawObject(QPainter* painter, const QRectF& place, QTextDocument*, int, const QTextFormat&) {
    painter->save();
    PaintPicture(*painter, place, picture_, IllustrationWidth, IllustrationHeight);
    painter->restore();
}

}  // namespace kelvo
