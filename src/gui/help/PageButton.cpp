#include "help/PageButton.h"

#include <QPainter>
#include <QStyleOption>

#include "help/Illustrations.h"
#include "kit/PictureView.h"

namespace kelvo {
namespace {

constexpr float CornerSize = 900;
constexpr int WidestPicture = 90;  ///< in letters

}  // namespace

PageButton::PageButton(bool back, QWidget* parent) : QAbstractButton(parent), picture_(PageCorner(back)) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PageButton::sizeHint() const {
    const int side = 3 * fontMetrics().height();
    return {side, side};
}

void PageButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), isDown() ? QColor(QStringLiteral("#dbe7f3")) : QColor(Qt::white));
    PaintPicture(painter, QRectF(rect()), picture_, CornerSize, CornerSize);
    if (!hasFocus()) return;
    painter.setPen(QPen(QColor(QStringLiteral("#1f6fc0")), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

IllustrationView::IllustrationView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    // Beside text of its own size a picture that fills a large display would drown the advice.
    setMaximumWidth(fontMetrics().averageCharWidth() * WidestPicture);
}

void IllustrationView::Show(const DisplayList& picture) {
    picture_ = picture;
    update();
}

void IllustrationView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QSizeF size =
        QSizeF(double{IllustrationWidth}, double{IllustrationHeight}).scaled(rect().size(), Qt::KeepAspectRatio);
    const QRectF place(QPointF((width() - size.width()) / 2, 0), size);
    painter.fillRect(place, Qt::white);
    PaintPicture(painter, place.adjusted(4, 4, -4, -4), picture_, IllustrationWidth, IllustrationHeight);
}

}  // namespace kelvo
