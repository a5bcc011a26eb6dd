#include "calibration/FloatingMessage.h"

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>

namespace kelvo {

FloatingMessage::FloatingMessage(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lblmsg"));
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setCursor(Qt::OpenHandCursor);
    setStyleSheet(
        QStringLiteral("background: #eef4fb; color: #10263d; border: 1px solid #7f9dbd; border-radius: 6px;"
                       "padding: 8px;"));
}

void FloatingMessage::MoveInside(QPoint place) {
    const QSize room = parentWidget()->size();
    // Past the right or bottom edge it still fits; what is larger than its parent shows its left top.
    move(std::max(0, std::min(place.x(), room.width() - width())),
         std::max(0, std::min(place.y(), room.height() - height())));
}

void FloatingMessage::mousePressEvent(QMouseEvent* event) {
    grip_ = event->pos();
    moving_ = false;
}

void FloatingMessage::mouseMoveEvent(QMouseEvent* event) {
    if (!moving_ && (event->pos() - grip_).manhattanLength() < QApplication::startDragDistance()) return;
    moving_ = dragged_ = true;
    move(pos() + event->pos() - grip_);
}

void FloatingMessage::mouseReleaseEvent(QMouseEvent*) {
    if (!moving_) {
        emit Clicked();
        return;
    }
    moving_ = false;
    MoveInside(pos());
}

}  // namespace kelvo
