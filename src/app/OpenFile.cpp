#include "app/OpenFile.h"

#include "kit/AskedToOpen.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"

namespace kelvo {

bool OpenFileInScreen(AppContext& context, const std::string& file, const AnswerNext& answerNext) {
    const auto open = [&context](ScreenCode code, OpensAsked what) {
        if (auto* screen = dynamic_cast<AskedToOpen*>(context.screens.Find(code))) screen->OpenAsked(what);
    };
    return FileOpening(context.state, context.prompts, context.files, context.screens, answerNext, open).Open(file);
}

}  // namespace kelvo
