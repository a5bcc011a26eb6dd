#pragma once

#include <QPlainTextEdit>
#include <string>

namespace kelvo {

/// The note pad. Whatever reaches it (keys, paste, drop, input method) goes through one filter: what a note file cannot
/// hold, or more than it may hold, is refused as a whole and told.
class NoteEdit : public QPlainTextEdit {
    Q_OBJECT
 public:
    explicit NoteEdit(QWidget* parent = nullptr);

    void SetText(const std::string& utf8);
    /// The text with LF; no-break blanks stay what they are.
    std::string Text() const;

 signals:
    /// Nothing of that text was taken; `why` is a sentence for the status bar.
    void Refused(const QString& why);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

 private:
    bool Takes(const QString& text);
    void WrapFor(qsizetype longestLine);
};

}  // namespace kelvo
