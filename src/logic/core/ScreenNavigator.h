#pragma once

#include "core/ScreenCode.h"

namespace kelvo {

/// The screens around a presenter, by their numbers. The screen manager is one; a test writes down what was asked.
class ScreenNavigator {
 public:
    virtual ~ScreenNavigator() = default;
    /// Whether a route to the screen can be offered at all.
    virtual bool Knows(ScreenCode code) const = 0;
    virtual bool IsLoaded(ScreenCode code) const = 0;
    virtual bool IsShown(ScreenCode code) const = 0;
    /// Loads it when needed and puts it in front, as it stands: it is not told that it has been activated.
    virtual void Present(ScreenCode code) = 0;
    /// Loads, shows and activates it; it becomes the window in front.
    virtual void Show(ScreenCode code) = 0;
    /// Shows it in front of all others and returns when it has been hidden or closed.
    virtual void ShowModal(ScreenCode code) = 0;
    virtual void Hide(ScreenCode code) = 0;
    /// Unloads the screen: its controls and what they hold are gone.
    virtual void Close(ScreenCode code) = 0;
    /// Closes the screen of that number and resets `ReturnScreen` to 0; a number without a screen only resets it.
    virtual void CloseSubScreen(int code) = 0;
    /// Closes every screen and ends the program.
    virtual void EndProgram(int exitCode) = 0;
    void EndProgram() { EndProgram(0); }
    /// Whether the program is ending: a step that has run an event loop meanwhile must not go on.
    virtual bool Ended() const = 0;
};

}  // namespace kelvo
