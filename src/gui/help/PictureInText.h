#pragma once

#include <QObject>
#include <QTextFormat>
#include <QTextObjectInterface>

#include "core/DisplayList.h"

namespace kelvo {

/// A display list inside a text: an object that the document asks for its size and for its drawing.
class PictureInText : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
 public:
    /// Property of the object's format: the width that the picture takes, in 1/96 inch.
    static constexpr int WidthProperty = QTextFormat::UserProperty + 2;

    explicit PictureInText(DisplayList picture, QObject* parent) : QObject(parent), picture_(std::move(picture)) {}

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int position,
                    const QTextFormat& format) override;

 private:
    DisplayList picture_;
};

}  // namespace kelvo
