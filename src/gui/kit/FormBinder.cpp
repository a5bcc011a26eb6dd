#include "kit/FormBinder.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <utility>

#include "kit/EntryBox.h"

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

FormBinder::FormBinder(FormModel& form, QObject* parent) : QObject(parent), form_(form) {}

void FormBinder::Bind(int box, EntryBox* widget) {
    boxes_[box] = widget;
    widget->setMaxLength(AnyLength);
    widget->SetFilter([this, box](char32_t key) { return form_.KeyAllowed(box, key); });
    widget->SetKeepsRefused(form_.KeepsRefusedKeys());
    connect(widget, &QLineEdit::textChanged, this, [this, box](const QString& text) {
        if (!writing_) Hand([this, box, text] { form_.Edited(box, text.toStdString()); });
    });
    connect(widget, &EntryBox::Entered, this, [this, box] { Hand([this, box] { form_.Enter(box); }); });
    connect(widget, &EntryBox::Refused, this, [this, box] { Hand([this, box] { form_.KeyRefused(box); }); });
    connect(widget, &EntryBox::Clicked, this, [this, box] { Hand([this, box] { form_.Clicked(box); }); });
    connect(widget, &EntryBox::FocusLost, this, [this, box] {
        if (!writing_ && !busy_) Hand([this, box] { form_.Left(box); });
    });
}

void FormBinder::BindButton(int button, QAbstractButton* widget) {
    buttons_[button] = widget;
    connect(widget, &QAbstractButton::clicked, this, [this, button] { Hand([this, button] { form_.Press(button); }); });
}

void FormBinder::BindList(int list, QComboBox* widget) {
    lists_[list] = widget;
    widget->installEventFilter(this);
    const auto select = [this, list](int row) { Hand([this, list, row] { form_.Select(list, row); }); };
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

void FormBinder::Hand(std::function<void()> doing) {
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

void FormBinder::WriteBack() {
    const bool outer = std::exchange(writing_, true);
    for (const auto& [box, widget] : boxes_)
        if (widget) WriteBox(box, *widget);
    for (const auto& [list, widget] : lists_)
        if (widget && widget->currentIndex() != form_.Selected(list)) widget->setCurrentIndex(form_.Selected(list));
    MoveFocus();
    writing_ = outer;
    emit Shown();
}

void FormBinder::WriteBox(int box, EntryBox& widget) {
    const FormModel::Box& state = form_.At(box);
    if (widget.isReadOnly() != state.readOnly) widget.SetComputed(state.readOnly);
    if (widget.Text() != state.text) widget.SetText(state.text);
    if (widget.isEnabledTo(widget.parentWidget()) != state.enabled) widget.setEnabled(state.enabled);
    if (widget.isHidden() == state.visible) widget.setVisible(state.visible);
    widget.SetNextField(state.nextField);
}

void FormBinder::MoveFocus() {
    if (QWidget* target = Target(form_.TakeFocus())) target->setFocus(Qt::OtherFocusReason);
}

QWidget* FormBinder::Target(int focus) const {
    const auto find = [](const auto& widgets, int key) -> QWidget* {
        const auto found = widgets.find(key);
        return found == widgets.end() ? nullptr : found->second.data();
    };
    if (focus == FormModel::NoFocus) return nullptr;
    if (focus >= FormModel::FirstList) return find(lists_, focus - FormModel::FirstList);
    if (focus >= FormModel::FirstButton) return find(buttons_, focus - FormModel::FirstButton);
    return find(boxes_, focus);
}

bool FormBinder::eventFilter(QObject* watched, QEvent* event) {
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
