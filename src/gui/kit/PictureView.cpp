#include "kit/PictureView.h"

#include <QAccessible>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

#include "kit/Theme.h"

namespace kelvo {
namespace {

struct Scale {
    double x, y, letter;
    QPointF origin;
    QPointF At(float px, float py) const { return origin + QPointF(px * x, py * y); }
};

void PaintText(QPainter& painter, const DisplayItem& item, const Scale& scale, const QRectF& target) {
    constexpr double TwipsAPoint = 20, SmallestPixels = 9;
    QFont font = painter.font();
    const double natural = item.size * TwipsAPoint * scale.letter;
    font.setPixelSize(qRound(std::max(SmallestPixels, natural)));
    painter.setFont(font);
    const QString text = QString::fromStdString(item.text);
    const QFontMetricsF metrics(font);
    const double wide = metrics.horizontalAdvance(text);
    const double room = item.maxWidth > 0 ? item.maxWidth * scale.x : target.width();
    QPointF place = scale.At(item.x1, item.y1);
    // A text that would be cut at the right edge, a long ion name for one, moves to the left.
    place.setX(std::max(target.left(), std::min(place.x(), target.right() - std::min(wide, room))));
    painter.save();
    // Letters kept larger than the scale asks for grow upwards from their line, not into what stands below.
    painter.translate(place.x(), place.y() + metrics.ascent() * natural / font.pixelSize());
    if (wide > room) painter.scale(room / wide, 1);
    painter.drawText(QPointF(0, 0), text);
    painter.restore();
}

void PaintDot(QPainter& painter, const DisplayItem& item, const Scale& scale, const QColor& ink, double line) {
    // A speck may become small; a dot stays large enough to be seen.
    constexpr float Speck = 60;
    painter.setRenderHint(QPainter::Antialiasing);
    const double radius = std::max(item.size < Speck ? 1.2 : 2.5, double{item.size} * scale.letter / 2);
    painter.setPen(item.hollow ? QPen(ink, line) : QPen(Qt::NoPen));
    painter.setBrush(item.hollow ? QColor(Qt::white) : ink);
    const QPointF centre = scale.At(item.x1, item.y1);
    if (item.shape == DisplayItem::Shape::Square)
        painter.drawRect(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius));
    else
        painter.drawEllipse(centre, radius, radius);
}

}  // namespace

void PaintPicture(QPainter& painter, const QRectF& target, const DisplayList& picture, float width, float height) {
    const double x = target.width() / width;
    const double y = target.height() / height;
    const Scale scale{x, y, std::min(x, y), target.topLeft()};
    constexpr double TwipsAPixel = 15;
    const double line = std::max(1.0, std::round(scale.letter * TwipsAPixel));
    for (const DisplayItem& item : picture.Items()) {
        const QColor ink = ColourOf(item.colour);
        painter.setPen(QPen(ink, item.size * line));
        switch (item.kind) {
            case DisplayItem::Kind::Line:
                // Upright and level lines stay on the pixel grid, so that axes are sharp.
                painter.setRenderHint(QPainter::Antialiasing, item.x1 != item.x2 && item.y1 != item.y2);
                painter.drawLine(scale.At(item.x1, item.y1), scale.At(item.x2, item.y2));
                break;
            case DisplayItem::Kind::Dot: PaintDot(painter, item, scale, ink, line); break;
            case DisplayItem::Kind::Text: PaintText(painter, item, scale, target); break;
        }
    }
}

PictureView::PictureView(const DisplayList& picture, QWidget* parent, float width, float height)
    : QWidget(parent), picture_(picture), width_(width), height_(height) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::NoFocus);
}

QString PictureView::Description() const {
    if (words_) return QString::fromStdString(words_());
    QStringList texts;
    for (const DisplayItem& item : picture_.Items())
        if (item.kind == DisplayItem::Kind::Text) texts << QString::fromStdString(item.text).trimmed();
    return texts.join(QStringLiteral(", "));
}

void PictureView::TellReaders() {
    if (!QAccessible::isActive()) return;
    const QString words = Description();
    if (std::exchange(told_, words) == words) return;
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

void PictureView::paintEvent(QPaintEvent*) {
    TellReaders();
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    PaintPicture(painter, QRectF(rect()).adjusted(4, 2, -4, -2), picture_, width_, height_);
}

}  // namespace kelvo
