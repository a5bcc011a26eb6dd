#include "platform/SheetBinder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <utility>

#include "platform/EntryBox.h"

namespace kelvo {
namespace {

/// Sheets take numbers of any length: a text that the widget cuts would read as another number.
constexpr int AnyLength = 32767;

bool OpensList(const QKeyEvent& key) {
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End: return true;
        default: return !key.text().isEmpty() && key.text().front().isPrint();
    }
}

}  // namespace

SheetBinder::SheetBinder(Sheet& sheet, QObject* parent) : QObject(parent), sheet_(sheet) {}

void SheetBinder::Bind(int box, EntryBox* widget) {
    boxes_[box] = widget;
    widget->setMaxLength(AnyLength);
    widget->SetFilter([this, box](char32_t key) { return sheet_.KeyAllowed(box, key); });
    connect(widget, &QLineEdit::textChanged, this, [this, box](const QString& text) {
        if (!writing_) Hand([this, box, text] { sheet_.Edited(box, text.toStdString()); });
    });
    connect(widget, &EntryBox::Entered, this, [this, box] { Hand([this, box] { sheet_.Enter(box); }); });
    connect(widget, &EntryBox::Refused, this, [this, box] { Hand([this, box] { sheet_.KeyRefused(box); }); });
    connect(widget, &EntryBox::FocusLost, this, [this, box] {
        if (!writing_ && !busy_) Hand([this, box] { sheet_.Left(box); });
    });
}

void SheetBinder::BindButton(int button, QAbstractButton* widget) {
    buttons_[button] = widget;
    connect(widget, &QAbstractButton::clicked, this,
            [this, button] { Hand([this, button] { sheet_.Press(button); }); });
}

void SheetBinder::BindList(int list, QComboBox* widget) {
    lists_[list] = widget;
    widget->installEventFilter(this);
    const auto select = [this, list](int row) { Hand([this, list, row] { sheet_.Select(list, row); }); };
    connect(widget, &QComboBox::currentIndexChanged, this, [this, select](int row) {
        if (writing_) return;
        turned_ = true;
        select(row);
    });
    // Choosing the row that stands already is a choice too.
    connect(widget, &QComboBox::activated, this, [this, select](int row) {
        if (!std::exchange(turned_, false)) select(row);
    });
}

void SheetBinder::Hand(std::function<void()> doing) {
    waiting_.push_back(std::move(doing));
    if (busy_) return;
    busy_ = true;
    while (!waiting_.empty()) {
        const auto next = std::move(waiting_.front());
        waiting_.pop_front();
        next();
        WriteBack();
    }
    busy_ = false;
}

void SheetBinder::WriteBack() {
    const bool outer = std::exchange(writing_, true);
    for (const auto& [box, widget] : boxes_)
        if (widget) WriteBox(box, *widget);
    for (const auto& [list, widget] : lists_)
        if (widget && widget->currentIndex() != sheet_.Selected(list)) widget->setCurrentIndex(sheet_.Selected(list));
    MoveFocus();
    writing_ = outer;
    emit Shown();
}

void SheetBinder::WriteBox(int box, EntryBox& widget) {
    const Sheet::Box& state = sheet_.At(box);
    if (widget.isReadOnly() != state.readOnly) widget.SetComputed(state.readOnly);
    if (widget.Text() != state.text) widget.SetText(state.text);
    if (widget.isEnabledTo(widget.parentWidget()) != state.enabled) widget.setEnabled(state.enabled);
    if (widget.isHidden() == state.visible) widget.setVisible(state.visible);
    widget.SetLead(state.lead);
}

void SheetBinder::MoveFocus() {
    if (QWidget* target = Target(sheet_.TakeFocus())) target->setFocus(Qt::OtherFocusReason);
}

QWidget* SheetBinder::Target(int focus) const {
    const auto find = [](const auto& widgets, int key) -> QWidget* {
        const auto found = widgets.find(key);
        return found == widgets.end() ? nullptr : found->second.data();
    };
    if (focus == Sheet::NoFocus) return nullptr;
    if (focus >= Sheet::FirstList) return find(lists_, focus - Sheet::FirstList);
    if (focus >= Sheet::FirstButton) return find(buttons_, focus - Sheet::FirstButton);
    return find(boxes_, focus);
}

bool SheetBinder::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
    auto* list = static_cast<QComboBox*>(watched);
    auto* key = static_cast<QKeyEvent*>(event);
    if (!OpensList(*key)) return QObject::eventFilter(watched, event);
    list->showPopup();
    // The first letter searches already; an arrow only opens.
    if (!key->text().isEmpty() && key->key() != Qt::Key_Space) QApplication::sendEvent(list->view(), key);
    return true;
}

}  // namespace kelvo
