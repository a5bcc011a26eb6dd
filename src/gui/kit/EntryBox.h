#pragma once

#include <QLineEdit>
#include <functional>

namespace kelvo {

/// A box of one line. Whatever reaches it (keys, paste, drop, middle click, input method) goes through one filter;
/// a refused character or text changes nothing and is told. Enter is a signal of its own and never leaves the box
/// for the window. Texts set by the program are not filtered.
class EntryBox : public QLineEdit {
    Q_OBJECT
 public:
    /// Longest text of a box for numbers and for words. Words end where the settings file cuts a value.
    static constexpr int NumberLength = 32, WordLength = 254;

    explicit EntryBox(QWidget* parent = nullptr);

    /// Right-aligned, short: a box for a number.
    static EntryBox* Number(QWidget* parent = nullptr);
    /// Left-aligned, long: a box for words. Characters that the code page lacks are refused.
    static EntryBox* Words(QWidget* parent = nullptr);

    /// Which characters may be typed. The code page is asked besides.
    void SetFilter(std::function<bool(char32_t)> allowed) { allowed_ = std::move(allowed); }
    /// A refused character is told and stays in the box all the same.
    void SetKeepsRefused(bool keeps) { keepsRefused_ = keeps; }

    /// Sets the text without filter and without the signals of editing, whole: `maxLength` is for what is typed.
    void SetText(const QString& text);
    void SetText(const std::string& text);
    std::string Text() const { return text().toStdString(); }

    /// Computed: shown flat, not typed into.
    void SetComputed(bool computed);
    /// Yellow: the box to fill next.
    void SetNextField(bool nextField);
    /// One of the sixteen colours as background, with a text colour that reads on it; -1 takes it away.
    void SetBackground(int colour);

 signals:
    void Entered();
    /// A character was refused by the filter of the box.
    void Refused();
    /// A character has no place in Kelvo's files.
    void NotInCodePage(const QString& character);
    void FocusLost();
    /// The pointer has been put into the box.
    void Clicked();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

 private:
    friend class EntryFilter;
    bool Accepts(const QString& candidate);
    void Restyle();
    void MakeRoomFor(qsizetype length);

    std::function<bool(char32_t)> allowed_;
    QString accepted_;
    bool settingText_ = false, keepsRefused_ = false;
    int typedLength_ = 0;  ///< limit for typing while a longer text of the program stands, 0 while none does
};

}  // namespace kelvo
