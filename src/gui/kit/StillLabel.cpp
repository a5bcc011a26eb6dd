#include "kit/StillLabel.h"

#include <QEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace kelvo {
namespace {

constexpr qreal Endless = 1 << 20;

}  // namespace

StillLabel::StillLabel(const QString& text) {
    setTextFormat(Qt::PlainText);
    setText(text);
}

void StillLabel::LayOut(qreal width) const {
    if (width == width_) return;
    if (width_ < 0) {
        layout_.setText(text().replace(QLatin1Char('\n'), QChar::LineSeparator));
        layout_.setFont(font());
        layout_.setCacheEnabled(true);
    }
    width_ = width;
    layout_.beginLayout();
    qreal widest = 0, bottom = 0;
    for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, bottom});
        widest = std::max(widest, line.naturalTextWidth());
        bottom += line.height();
    }
    layout_.endLayout();
    size_ = QSizeF(widest, bottom) * scale_;
}

QSize StillLabel::sizeHint() const {
    ensurePolished();
    const QMargins margins = contentsMargins();
    LayOut(wordWrap() ? minimumWidth() - margins.left() - margins.right() : Endless);
    const QSize whole(static_cast<int>(std::ceil(size_.width())), static_cast<int>(std::ceil(size_.height())));
    return whole.grownBy(margins).expandedTo(minimumSize());
}

void StillLabel::paintEvent(QPaintEvent*) {
    const QRect room = contentsRect();
    LayOut(wordWrap() ? room.width() : Endless);
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const qreal left = (alignment() & Qt::AlignHCenter) != 0 ? (room.width() - size_.width()) / 2 : 0;
    painter.translate(room.left() + left, room.top());
    if (scale_ != 1) painter.scale(scale_, scale_);
    layout_.draw(&painter, QPointF());
}

void StillLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    width_ = -1;
    updateGeometry();
}

}  // namespace kelvo
