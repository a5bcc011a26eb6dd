#pragma once

#include <QString>

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

/// Qt's own file dialog: it needs no desktop portal, and leaves the overwrite question to Kelvo's own text. Asked for a
/// folder that is hidden, as the program's own is, it opens where files were last chosen, at first in Documents (or the
/// home folder); files to be opened are sought in the hidden folder first while it holds some of their kind.
class QtFileChooser : public FileChooser {
 public:
    std::optional<std::string> Open(const FileRequest& request) override;
    std::optional<std::string> Save(const FileRequest& request) override;

    /// The next request to open a file gets this name without a dialog; none: it asks again.
    void AnswerNext(std::optional<std::string> name) { next_ = std::move(name); }

 private:
    enum class For { Opening, Saving };
    std::optional<std::string> Run(const FileRequest& request, For what);
    QString StartFolder(const FileRequest& request, For what) const;

    std::optional<std::string> next_;
    QString lastFolder_;
};

}  // namespace kelvo
