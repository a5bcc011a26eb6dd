#pragma once

#include <QPlainTextEdit>
#include <string>

namespace kelvo {

/// The note pad. It takes every character there is. Of what reaches it (keys, paste, drop, input method) only control
/// characters are left out, and the end of what is more than it may hold; that is told.
class NoteEdit : public QPlainTextEdit {
    Q_OBJECT
 public:
    explicit NoteEdit(QWidget* parent = nullptr);

    void SetText(const std::string& utf8);
    /// The text with LF; no-break blanks stay what they are.
    std::string Text() const;

 signals:
    /// Something of a text was not taken; `what` is a sentence for the status bar.
    void LeftOut(const QString& what);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

 private:
    QString Fitting(const QString& text, QString& leftOut) const;
    void WrapFor(qsizetype longestLine);
};

}  // namespace kelvo
