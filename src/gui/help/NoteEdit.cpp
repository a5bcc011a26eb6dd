#include "help/NoteEdit.h"

#include <QtWidgets>

#include "help/NotePad.h"

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

QString NoteEdit::Fitting(const QString& text, QString& leftOut) const {
    QString fitting;
    for (const QChar c : text) {
        if (c.unicode() >= 32 || c == u'\n' || c == u'\r' || c == u'\t') fitting += c;
    }
    if (fitting.size() != text.size()) leftOut = tr("Control characters cannot be kept in a note and were left out.");
    // The document counts its end as one; what is selected makes room.
    const qsizetype kept = document()->characterCount() - 1 - textCursor().selectedText().size();
    qsizetype room = std::max<qsizetype>(0, static_cast<qsizetype>(NotePad::LongestText) - kept);
    if (fitting.size() <= room) return fitting;
    leftOut = tr("The note pad holds up to 1 MB, 1048576 characters; what is beyond was not taken.");
    if (room > 0 && fitting[room - 1].isHighSurrogate()) --room;
    return fitting.left(room);
}

void NoteEdit::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    const bool typed =
        !isReadOnly() && !text.isEmpty() && text.front().unicode() >= 32 && text.front().unicode() != 127;
    QString leftOut;
    if (!typed || !Fitting(text, leftOut).isEmpty()) return QPlainTextEdit::keyPressEvent(event);
    emit LeftOut(leftOut);
}

void NoteEdit::inputMethodEvent(QInputMethodEvent* event) {
    QString leftOut;
    const QString fitting = isReadOnly() ? event->commitString() : Fitting(event->commitString(), leftOut);
    QInputMethodEvent taken(event->preeditString(), event->attributes());
    taken.setCommitString(fitting, event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&taken);
    if (!leftOut.isEmpty()) emit LeftOut(leftOut);
}

bool NoteEdit::canInsertFromMimeData(const QMimeData* source) const {
    return source->hasText() && !isReadOnly();
}

void NoteEdit::insertFromMimeData(const QMimeData* source) {
    if (!canInsertFromMimeData(source)) return;
    QString leftOut;
    QMimeData taken;
    taken.setText(Fitting(source->text(), leftOut));
    const qsizetype longest = textCursor().block().length() + LongestLineOf(taken.text());
    if (longest > LongestLine) WrapFor(longest);
    if (!taken.text().isEmpty()) QPlainTextEdit::insertFromMimeData(&taken);
    // After the text: a change of the pad takes the last remark away.
    if (!leftOut.isEmpty()) emit LeftOut(leftOut);
}

}  // namespace kelvo
