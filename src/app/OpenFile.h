#pragma once

#include <functional>
#include <optional>
#include <string>

#include "kit/AppContext.h"

namespace kelvo {

/// Makes the file chooser answer its next request to open a file with this name, without a dialog; none: it asks
/// again.
using AnswerNext = std::function<void(std::optional<std::string>)>;

/// Opens a file that the program was started with, in the screen that works with its kind: by that screen's own way to
/// open it, so that a faulty file is told there in the usual words. A calibration is taken for the ion it was made
/// with; the ion of the hardware setup stands aside for it.
/// @return false after a message when there is no such file, or no screen for it: nothing has been shown then
bool OpenFileInScreen(AppContext& context, const std::string& file, const AnswerNext& answerNext);

}  // namespace kelvo
