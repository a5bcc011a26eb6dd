#include "kit/EntryBox.h"

#include <QKeyEvent>
#include <QStyle>
#include <QTimer>
#include <QValidator>
#include <algorithm>

#include "kit/Theme.h"
#include "text/CodePage.h"

namespace kelvo {
namespace {

/// Set while the focus is in a computed box because Tab led there, to be read or copied: the form does not know of it.
constexpr const char* OnlyRead = "onlyRead";

}  // namespace

/// Qt asks the validator about every change by every road, so the filter sits here.
class EntryFilter : public QValidator {
 public:
    explicit EntryFilter(EntryBox* box) : QValidator(box), box_(box) {}
    State validate(QString& input, int&) const override { return box_->Accepts(input) ? Acceptable : Invalid; }

 private:
    EntryBox* box_;
};

EntryBox::EntryBox(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(WordLength);
    setValidator(new EntryFilter(this));
    // Whoever shortens a long text that the program wrote gets no more room than for any other.
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) { MakeRoomFor(text.size()); });
}

EntryBox* EntryBox::Number(QWidget* parent) {
    auto* box = new EntryBox(parent);
    box->setMaxLength(NumberLength);
    box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("00000000000")));
    return box;
}

EntryBox* EntryBox::Words(QWidget* parent) {
    auto* box = new EntryBox(parent);
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("0000000000000000")));
    return box;
}

bool EntryBox::Accepts(const QString& candidate) {
    if (settingText_ || isReadOnly()) {
        accepted_ = candidate;
        return true;
    }
    // Only what is new is judged: the common head and tail of the old and the new text stand already.
    const auto shorter = std::min(candidate.size(), accepted_.size());
    qsizetype head = 0;
    while (head < shorter && candidate[head] == accepted_[head])
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && candidate[candidate.size() - 1 - tail] == accepted_[accepted_.size() - 1 - tail])
        ++tail;
    const auto added = candidate.mid(head, candidate.size() - head - tail).toUcs4();
    bool told = false;
    for (const char32_t character : added) {
        if (!told && allowed_ && !allowed_(character)) {
            QTimer::singleShot(0, this, &EntryBox::Refused);
            if (!keepsRefused_) return false;
            told = true;
        }
        if (character < 32 || !InCodePage(character)) {
            const QString shown = character < 32 ? QString() : QString::fromUcs4(&character, 1);
            QTimer::singleShot(0, this, [this, shown] { emit NotInCodePage(shown); });
            return false;
        }
    }
    accepted_ = candidate;
    return true;
}

void EntryBox::SetText(const QString& text) {
    const bool outer = settingText_;
    settingText_ = true;
    MakeRoomFor(std::max(text.size(), this->text().size()));
    setText(text);
    accepted_ = this->text();
    MakeRoomFor(text.size());
    settingText_ = outer;
    if (isReadOnly()) setCursorPosition(0);
}

void EntryBox::MakeRoomFor(qsizetype length) {
    const int typed = typedLength_ > 0 ? typedLength_ : maxLength();
    const int wanted = std::max(typed, static_cast<int>(length));
    typedLength_ = wanted > typed ? typed : 0;
    if (wanted != maxLength()) setMaxLength(wanted);
}

void EntryBox::SetText(const std::string& text) {
    SetText(QString::fromStdString(text));
}

void EntryBox::SetComputed(bool computed) {
    setReadOnly(computed);
    // Tab reaches it, so that its value can be heard and copied; the pointer leaves the focus where it is.
    setFocusPolicy(computed ? Qt::TabFocus : Qt::StrongFocus);
    Restyle();
}

void EntryBox::SetNextField(bool nextField) {
    if (property("nextField").toBool() == nextField) return;
    setProperty("nextField", nextField);
    Restyle();
}

void EntryBox::SetBackground(int colour) {
    if (colour < 0) {
        setStyleSheet({});
        return;
    }
    setStyleSheet(QStringLiteral("background: %1; color: %2;").arg(ColourOf(colour).name(), TextOn(colour).name()));
}

void EntryBox::Restyle() {
    style()->unpolish(this);
    style()->polish(this);
}

void EntryBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (property(OnlyRead).toBool()) return event->ignore();  // the window moves on
        emit Entered();
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void EntryBox::mousePressEvent(QMouseEvent* event) {
    QLineEdit::mousePressEvent(event);
    if (event->button() == Qt::LeftButton) emit Clicked();
}

void EntryBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    const bool byTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byTab) setProperty(OnlyRead, isReadOnly());
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason) selectAll();
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
    const bool onlyRead = property(OnlyRead).toBool();
    setProperty(OnlyRead, false);
    if (!onlyRead) emit FocusLost();
}

}  // namespace kelvo
