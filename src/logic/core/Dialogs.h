#pragma once

#include <optional>
#include <string>

namespace kelvo {

// What presenters and form models ask of the analyst, as plain interfaces. Their Qt side is in devices/QtDialogs.

enum class Icon { None, Exclamation };

/// Message boxes, questions and input boxes. Every call returns when the analyst has answered.
class Prompts {
 public:
    virtual ~Prompts() = default;
    /// A text and OK. Titles are empty unless told.
    virtual void Message(const std::string& text, const std::string& title = {}, Icon icon = Icon::None) = 0;
    /// Yes or No. @param defaultNo No is the answer of Enter. Closing the box counts as No.
    virtual bool Ask(const std::string& text, bool defaultNo = false, const std::string& title = {}) = 0;
    /// Yes or No where No loses something that was measured or typed: Yes is the answer of Enter, and only the two
    /// buttons answer. Escape and the frame's close button do nothing.
    virtual bool AskToSave(const std::string& text, const std::string& title = {}) = 0;
    /// A line of text; none when cancelled.
    virtual std::optional<std::string> Input(const std::string& title, const std::string& prompt,
                                             const std::string& initial) = 0;
};

/// One request to the file chooser.
struct FileRequest {
    std::string filter;       ///< "All Data(*.ISE)|*.ISE": text, bar, pattern
    std::string directory;    ///< folder it opens at
    std::string initialName;  ///< name or pattern offered, may be empty
};

/// File choosers. They never ask about overwriting: that question has Kelvo's own text.
class FileChooser {
 public:
    virtual ~FileChooser() = default;
    /// Full path, empty when OK was pressed on nothing, none when cancelled.
    virtual std::optional<std::string> Open(const FileRequest& request) = 0;
    virtual std::optional<std::string> Save(const FileRequest& request) = 0;
};

/// How a step that saves ended.
enum class SaveOutcome {
    Saved,
    Cancelled,  ///< no name was given; nothing was written
    Failed,     ///< told in a box; the old file stands as it was
};

}  // namespace kelvo
