#include "tables/FindBar.h"

#include <QtWidgets>

#include "kit/Screen.h"

namespace kelvo {

FindBar::FindBar(QWidget* parent) : QWidget(parent), txtFind_(Named(new QLineEdit, "txtFind")) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    auto* caption = new QLabel(tr("&Find:"));
    caption->setBuddy(txtFind_);
    txtFind_->setAccessibleName(tr("Find"));
    txtFind_->setMaximumWidth(360);
    auto* next = Named(new QPushButton(tr("&Next")), "cmdFind", 0);
    auto* before = Named(new QPushButton(tr("&Previous")), "cmdFind", 1);
    auto* close = Named(new QPushButton(tr("Close")), "cmdFind", 2);
    for (QPushButton* button : {next, before, close})
        button->setAutoDefault(false);
    line->addWidget(caption);
    line->addWidget(txtFind_, 1);
    line->addWidget(next);
    line->addWidget(before);
    line->addStretch();
    line->addWidget(close);
    connect(next, &QPushButton::clicked, this, [this] { emit Wanted(true); });
    connect(before, &QPushButton::clicked, this, [this] { emit Wanted(false); });
    connect(close, &QPushButton::clicked, this, &FindBar::Closed);
    hide();
}

void FindBar::Ask() {
    show();
    txtFind_->setFocus(Qt::ShortcutFocusReason);
    txtFind_->selectAll();
}

QString FindBar::Text() const {
    return txtFind_->text();
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter: emit Wanted(!event->modifiers().testFlag(Qt::ShiftModifier)); return;
        case Qt::Key_Escape: emit Closed(); return;
        default: QWidget::keyPressEvent(event);
    }
}

}  // namespace kelvo
