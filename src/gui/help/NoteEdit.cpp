#include "help/NoteEdit.h"

#include <QtWidgets>

#include "help/NotePad.h"
#include "text/CodePage.h"

namespace kelvo {

NoteEdit::NoteEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
}

void NoteEdit::SetText(const std::string& utf8) {
    setPlainText(QString::fromStdString(utf8));
}

std::string NoteEdit::Text() const {
    // The plain text would turn no-break blanks into blanks.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text.toStdString();
}

bool NoteEdit::Takes(const QString& text) {
    if (isReadOnly()) return true;
    if (static_cast<std::size_t>(document()->characterCount() + text.size()) > NotePad::LongestText) {
        emit Refused(tr("The note pad holds up to a million characters; this was not taken."));
        return false;
    }
    for (const char32_t character : text.toUcs4()) {
        const bool lineEnd = character == '\n' || character == '\r' || character == '\t' ||
                             character == QChar::ParagraphSeparator || character == QChar::LineSeparator;
        if (lineEnd) continue;
        if (character < 32) {
            emit Refused(tr("A control character cannot be kept in a note; nothing was taken."));
            return false;
        }
        if (InCodePage(character)) continue;
        emit Refused(tr("The character \"%1\" cannot be stored in Kelvo's files; nothing was taken.")
                         .arg(QString::fromUcs4(&character, 1)));
        return false;
    }
    return true;
}

void NoteEdit::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool typed = !text.isEmpty() && text.front().unicode() >= 32 && text.front().unicode() != 127;
    if (typed && !Takes(text)) return;
    QPlainTextEdit::keyPressEvent(event);
}

void NoteEdit::inputMethodEvent(QInputMethodEvent* event) {
    if (event->commitString().isEmpty() || Takes(event->commitString())) return QPlainTextEdit::inputMethodEvent(event);
    QInputMethodEvent nothing;
    QPlainTextEdit::inputMethodEvent(&nothing);
}

bool NoteEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() && !isReadOnly();
}

void NoteEdit::insertFromMimeData(const QMimeData* source) {
    if (source->hasText() && Takes(source->text())) QPlainTextEdit::insertFromMimeData(source);
}

}  // namespace kelvo
