#include "calibration/FloatingMessage.h"

#include <QApplication>
#include <QMouseEvent>
#include <algorithm>

#include "kit/Theme.h"

namespace kelvo {

FloatingMessage::FloatingMessage(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lblmsg"));
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setCursor(Qt::OpenHandCursor);
    setStyleSheet(MessageStyle(8));
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
