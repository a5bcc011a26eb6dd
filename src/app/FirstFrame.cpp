#include "app/FirstFrame.h"

#include <QCoreApplication>
#include <QDialog>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "kit/Screen.h"

namespace kelvo {
namespace {

/// Whether the widget stands in another screen or box; one that has no window yet may come into the opening screen.
bool StandsElsewhere(QObject* watched) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr) return false;
    const auto* screen = qobject_cast<Screen*>(widget->window());
    if (screen != nullptr) return screen->Code() != ScreenCode::frmNorvak;
    return qobject_cast<QDialog*>(widget->window()) != nullptr;
}

}  // namespace

FirstFrame::FirstFrame(QCoreApplication& app, std::function<void()> rest) : app_(app), rest_(std::move(rest)) {
    app_.installEventFilter(this);
}

void FirstFrame::Finish() {
    if (!rest_) return;
    app_.removeEventFilter(this);
    std::exchange(rest_, nullptr)();
}

bool FirstFrame::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Paint: QTimer::singleShot(0, this, &FirstFrame::Finish); break;
        case QEvent::KeyPress:
        case QEvent::MouseButtonPress:
        case QEvent::TouchBegin:
        case QEvent::Close: Finish(); break;
        case QEvent::Polish:
            if (StandsElsewhere(watched)) Finish();
            break;
        default: break;
    }
    return false;
}

}  // namespace kelvo
