#pragma once

namespace kelvo {

/// Where a step that may take seconds tells how far it is, so that the screen stays alive: what waits meanwhile (the
/// polling of the interface first of all) is done within the call. The base does nothing, for short steps and tests.
class Progress {
 public:
    virtual ~Progress() = default;
    /// `done` of `total` parts are made. It may be called as often as a row; it costs next to nothing.
    /// @return false: the analyst has cancelled the step
    virtual bool At(int /*done*/, int /*total*/) { return true; }
};

}  // namespace kelvo
