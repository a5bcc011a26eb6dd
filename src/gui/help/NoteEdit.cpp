#include "help/NoteEdit.h"

#include <QtWidgets>

#include "help/NotePad.h"
#include "text/CodePage.h"

namespace kelvo {
namespace {

/// Each wrapped line of a word is looked for from its end: in a megabyte without a blank that takes half a minute.
constexpr qsizetype LongestLine = 50'000;

qsizetype LongestLineOf(QStringView text) {
    qsizetype longest = 0;
    for (const QStringView line : text.tokenize(u'\n'))
        longest = std::max(longest, line.size());
    return longest;
}

}  // namespace

NoteEdit::NoteEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
}

void NoteEdit::SetText(const std::string& utf8) {
    const QString text = QString::fromStdString(utf8);
    WrapFor(LongestLineOf(text));
    setPlainText(text);
}

void NoteEdit::WrapFor(qsizetype longestLine) {
    setWordWrapMode(longestLine > LongestLine ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
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
    // The document counts its end as one; what is selected makes room.
    const qsizetype kept = document()->characterCount() - 1 - textCursor().selectedText().size();
    if (static_cast<std::size_t>(kept + text.size()) > NotePad::LongestText) {
        emit Refused(tr("The note pad holds up to 1 MB, 1048576 characters; this was not taken."));
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
    if (!source->hasText() || !Takes(source->text())) return;
    const qsizetype longest = textCursor().block().length() + LongestLineOf(source->text());
    if (longest > LongestLine) WrapFor(longest);
    QPlainTextEdit::insertFromMimeData(source);
}

}  // namespace kelvo
