#pragma once

#include <string>

#include "kit/AppContext.h"
#include "menu/FileOpening.h"

namespace kelvo {

/// Opens a file that the program was started with; see `FileOpening::Open`.
bool OpenFileInScreen(AppContext& context, const std::string& file, const AnswerNext& answerNext);

}  // namespace kelvo
