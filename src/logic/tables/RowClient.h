#pragma once

namespace kelvo {

/// A measuring screen that pauses while a row of its table is numbered or its table is looked at: the pH live display
/// switches its timer on again, the reading dialog starts its wait anew. The screen manager finds the screen, a cast
/// finds this.
class RowClient {
 public:
    virtual ~RowClient() = default;
    virtual void RowDone() = 0;
};

}  // namespace kelvo
