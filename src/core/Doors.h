#pragma once

#include <optional>
#include <string>

namespace kelvo {

// The doors to the outside, as plain interfaces. They stand on this floor, not in platform/, because sheets and
// calculating files speak through them and may not look up. Their Qt side is in platform/.

enum class Icon { None, Exclamation };

/// Message boxes, questions and input boxes. Every call returns when the analyst has answered.
class Prompts {
 public:
    virtual ~Prompts() = default;
    /// A text and OK. Titles are empty unless told.
    virtual void Message(const std::string& text, const std::string& title = {}, Icon icon = Icon::None) = 0;
    /// Yes or No. @param defaultNo No is the answer of Enter. Closing the box counts as No.
    virtual bool Ask(const std::string& text, bool defaultNo = false, const std::string& title = {}) = 0;
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

/// File choosers. They never ask about overwriting: that question has the system's own text.
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

/// Local date and time to the second.
struct DateTime {
    int year = 1970, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

class Clock {
 public:
    virtual ~Clock() = default;
    virtual DateTime Now() const = 0;
};

/// "24/11/2026 20:49" when `dateFormat` is 0, else "11/24/2026 20:49".
std::string DateTimeText(const DateTime& time, int dateFormat);
/// The date alone, "dd/mm/yyyy" or "mm/dd/yyyy".
std::string DateText(const DateTime& time, int dateFormat);
/// "20:49".
std::string TimeText(const DateTime& time);

}  // namespace kelvo
