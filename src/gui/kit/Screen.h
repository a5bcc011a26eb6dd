#pragma once

#include <QWidget>
#include <initializer_list>
#include <string>

#include "core/ScreenCode.h"
#include "kit/AppContext.h"

class QAbstractButton;
class QAction;
class QHBoxLayout;
class QLabel;
class QMenu;
class QMenuBar;
class QPushButton;
class QVBoxLayout;

namespace kelvo {

inline QString ToQt(const std::string& text) {
    return QString::fromStdString(text);
}
inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

/// Gives a control its name, "txtbox(0)" with an index and "cmdspok" without.
template <typename T>
T* Named(T* object, const char* name, int index = -1) {
    object->setObjectName(index < 0 ? QString::fromLatin1(name) : QStringLiteral("%1(%2)").arg(name).arg(index));
    return object;
}

class BodyArea;

/// One window of Kelvo: a menu bar when it has menus, a body that scrolls where it has no room, and a status bar
/// at the foot for quiet, lasting remarks (dialogs show it only when it holds one). Screens lay out widgets, forward
/// what the analyst does, show what came back.
class Screen : public QWidget {
    Q_OBJECT
 public:
    enum class Kind {
        Working,  ///< fills FormScale of the display
        Panel,    ///< as large as its content, with a lasting status bar
        Dialog,   ///< as large as its content, its status bar there only when it says something
    };

    Screen(AppContext& context, ScreenCode code, const char* formName, Kind kind);

    ScreenCode Code() const { return code_; }

    /// Runs once, when the screen manager has made the screen and before it is shown.
    virtual void OnLoad() {}
    /// Runs each time the screen manager shows it.
    virtual void OnActivate() {}
    /// Runs when the screen manager unloads it.
    virtual void OnUnload() {}

    /// Puts the window on the display and in front.
    void Present();
    /// F1, "Notes": the help sheet of this screen in front of it; where there is none, the manual.
    void ShowHelp();
    /// The manual, at a page ("manual.md#files") or at its beginning.
    void ShowManual(const std::string& page = {});
    /// The about box, its button reading "Ok".
    void ShowAbout();
    /// Sets the remark of the status bar; an empty text takes it away.
    void SetStatus(const std::string& text);
    /// What stands in front of every remark until it is set anew.
    void SetLastingStatus(const std::string& text);
    /// Takes up what `StatusMessages::StatusMessage` says; it stays until the screen is shown anew or says something
    /// else.
    void TakeStatusMessage();
    /// What the reading on the screen is worth, in front of the status; empty takes it away.
    void SetReadingNote(const std::string& text);
    /// All that the status bar shows.
    std::string StatusText() const;

 signals:
    /// The window has been hidden or closed.
    void WentAway();

 protected:
    /// The window frame's close button, or Alt+F4. The default is the same as Escape.
    virtual void OnFrameClose() { OnEscape(); }
    virtual void OnEscape() {}

    /// A row at the foot with its buttons at the right; Enter presses the one in hand.
    static QHBoxLayout* ButtonRow(std::initializer_list<QPushButton*> buttons);
    /// A layout with air at both sides.
    static QHBoxLayout* Centred(QLayout* layout);
    /// Tab goes through the widgets in this order.
    static void TabThrough(std::initializer_list<QWidget*> widgets);
    /// Something has come into sight: the window grows as far as its content needs.
    void GrowToContent();

    QVBoxLayout* Body() { return body_; }
    QMenuBar* Menus();
    QMenu* AddMenu(const char* name, const QString& title, int index = -1);
    QAction* AddItem(QMenu* menu, const char* name, int index, const QString& text);
    enum class HelpItems { NotesAndAbout, SetupAndAbout, AboutOnly };
    /// The menu "Help": `mnuHelp(0)` and on with what the screen has of "Notes" (or "Setup") and "About", then the
    /// manual. Whose sheet it is, `RequestHelp` knows from the screen's number.
    QMenu* AddHelpMenu(HelpItems items = HelpItems::NotesAndAbout);
    /// Leaves the screen for the menu by its own "Back" (or "Cancel"), with its questions.
    virtual void LeaveForMenu();

    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    AppContext& context_;
    WholeState state_;

 private:
    void ShowStatus();
    void FitFormToScreen();
    void WatchBoxes();

    ScreenCode code_;
    Kind kind_;
    BodyArea* area_;
    QVBoxLayout* body_;
    QMenuBar* menus_ = nullptr;
    QLabel* status_ = nullptr;
    std::string statusText_, takenStatus_, lastingStatus_, readingNote_;
    bool placed_ = false;
};

}  // namespace kelvo
