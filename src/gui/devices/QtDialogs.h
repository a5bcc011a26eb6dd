#pragma once

#include "core/Dialogs.h"

namespace kelvo {

/// Message boxes, questions and input boxes on the real desktop, in front of the window in hand.
class QtPrompts : public Prompts {
 public:
    void Message(const std::string& text, const std::string& title = {}, Icon icon = Icon::None) override;
    bool Ask(const std::string& text, bool defaultNo = false, const std::string& title = {}) override;
    bool AskToSave(const std::string& text, const std::string& title = {}) override;
    std::optional<std::string> Input(const std::string& title, const std::string& prompt,
                                     const std::string& initial) override;
};

/// Qt's own file dialog: it needs no desktop portal, and leaves the overwrite question to Kelvo's own text.
class QtFileChooser : public FileChooser {
 public:
    std::optional<std::string> Open(const FileRequest& request) override;
    std::optional<std::string> Save(const FileRequest& request) override;

    /// The next request to open a file gets this name without a dialog; none: it asks again.
    void AnswerNext(std::optional<std::string> name) { next_ = std::move(name); }

 private:
    std::optional<std::string> next_;
};

}  // namespace kelvo
