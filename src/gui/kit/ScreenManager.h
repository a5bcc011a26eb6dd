#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

#include "core/AppState.h"

namespace kelvo {

class Screen;

/// Knows screens by their numbers, makes them on first show, shows them modal or not, and closes them. Screens
/// never include one another: they go through here, and leave for each other what they have to say in AppState.
class ScreenManager : public QObject {
    Q_OBJECT
 public:
    using Maker = std::function<Screen*()>;

    explicit ScreenManager(AppState& state);
    ~ScreenManager() override;

    void Register(ScreenCode code, Maker maker);
    /// Whether a route to the screen can be offered at all.
    bool Knows(ScreenCode code) const;
    /// The screen when it is loaded, shown or hidden, else null.
    Screen* Find(ScreenCode code) const;
    bool IsLoaded(ScreenCode code) const { return Find(code) != nullptr; }
    bool IsShown(ScreenCode code) const;
    /// Loads the screen when it is not, without showing it. The screen must be known.
    Screen& Load(ScreenCode code);
    /// Loads, shows and activates it; it becomes the window in front.
    void Show(ScreenCode code);
    /// Shows it in front of all others and returns when it has been hidden or closed.
    void ShowModal(ScreenCode code);
    void Hide(ScreenCode code);
    /// Unloads the screen: its controls and what they hold are gone. Safe to call from the screen's own slots.
    void Close(ScreenCode code);
    /// Closes the screen of that number and resets `ReturnScreen` to 0; a number without a screen only resets it.
    void CloseSubScreen(int code);
    /// Closes every screen and ends the event loop.
    void EndProgram(int exitCode = 0);
    bool Ended() const { return ended_; }

 signals:
    /// A modal screen is up and its loop is running; tests drive it from here.
    void ModalShown(kelvo::Screen* screen);
    void ProgramEnded(int exitCode);

 protected:
    /// Swallows the second half of a double click whose first half has brought another window to that place.
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    AppState& state_;
    std::map<ScreenCode, Maker> makers_;
    std::map<ScreenCode, Screen*> loaded_;
    QPointer<QWidget> pressed_;  ///< window that the pointer was last pressed in
    bool ended_ = false;
};

}  // namespace kelvo
