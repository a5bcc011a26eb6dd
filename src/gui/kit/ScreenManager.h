#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

#include "core/ScreenNavigator.h"
#include "core/StateOf.h"

namespace kelvo {

class Screen;

/// Knows screens by their numbers, makes them on first show, shows them modal or not, and closes them. Screens
/// never include one another: they go through here, and leave for each other what they have to say in the state.
class ScreenManager : public QObject, public ScreenNavigator {
    Q_OBJECT
 public:
    using Maker = std::function<Screen*()>;

    explicit ScreenManager(StateOf<Navigation, StatusMessages> state);
    ~ScreenManager() override;

    void Register(ScreenCode code, Maker maker);
    /// Whether a route to the screen can be offered at all.
    bool Knows(ScreenCode code) const override;
    /// The screen when it is loaded, shown or hidden, else null.
    Screen* Find(ScreenCode code) const;
    bool IsLoaded(ScreenCode code) const override { return Find(code) != nullptr; }
    bool IsShown(ScreenCode code) const override;
    /// Loads the screen when it is not, without showing it. The screen must be known.
    Screen& Load(ScreenCode code);
    void Present(ScreenCode code) override;
    void Show(ScreenCode code) override;
    void ShowModal(ScreenCode code) override;
    void Hide(ScreenCode code) override;
    /// Safe to call from the screen's own slots.
    void Close(ScreenCode code) override;
    void CloseSubScreen(int code) override;
    void EndProgram(int exitCode) override;
    using ScreenNavigator::EndProgram;
    bool Ended() const override { return ended_; }

 signals:
    /// A modal screen is up and its loop is running; tests drive it from here.
    void ModalShown(kelvo::Screen* screen);
    void ProgramEnded(int exitCode);

 protected:
    /// Swallows the second half of a double click whose first half has brought another window to that place.
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    /// A message that a step has left in `StatusMessage` goes to the screen in front.
    void ShowStatusMessage();

    StateOf<Navigation, StatusMessages> state_;
    std::map<ScreenCode, Maker> makers_;
    std::map<ScreenCode, Screen*> loaded_;
    QPointer<QWidget> shownLast_;
    QPointer<QWidget> pressed_;  ///< window that the pointer was last pressed in
    bool ended_ = false;
};

}  // namespace kelvo
