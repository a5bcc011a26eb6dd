#pragma once

#include "menu/FileOpening.h"

namespace kelvo {

/// A screen that opens files of its own, when the program was started with one.
class AskedToOpen {
 public:
    virtual ~AskedToOpen() = default;
    virtual void OpenAsked(OpensAsked what) = 0;
};

}  // namespace kelvo
