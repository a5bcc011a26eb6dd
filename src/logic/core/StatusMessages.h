#pragma once

#include <string>

namespace kelvo {

/// Quiet lines on their way to the next screen.
struct StatusMessages {
    std::string StatusMessage;  ///< a quiet line that the next screen's status bar takes up
};

}  // namespace kelvo
