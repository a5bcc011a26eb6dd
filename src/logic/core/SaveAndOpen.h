#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/Dialogs.h"
#include "core/Messages.h"
#include "text/RuntimeError.h"

namespace kelvo {

// The way to a file, the same for whatever writes or reads one: a name from the dialog, its ending, the question before
// another file is replaced, and the word about a failure.

/// How a step that opens a file ended.
enum class OpenOutcome {
    Opened,
    Cancelled,  ///< no name was given
    Failed,     ///< told in a box
    Missing,    ///< told in a box
};

/// The name as it was chosen -> the name as it is used.
using NameRule = std::function<std::string(const std::string&)>;

/// `name` with `ending` unless its last part has one already.
std::string WithEnding(std::string name, std::string_view ending);

/// A name in `folder` when it has no folder of its own.
std::string InFolder(const std::string& folder, const std::string& name);

/// `InFolder` with the last part in upper case, `\` turned into `/`.
std::string UpperInFolder(const std::string& folder, const std::string& name);

struct SaveRequest {
    FileRequest dialog;
    std::string ending = {};                                    ///< of a name without one; put on after `use`
    NameRule use = {};                                          ///< none: as it was chosen
    std::string known = {};                                     ///< stands for the first answer of the dialog
    std::function<bool(const std::string&)> refused = nullptr;  ///< has told why this name will not do
};

/// Asks for the name of a file to write until there is no such file or it may be replaced. @return none when cancelled
std::optional<std::string> AskNameToSave(Prompts& prompts, FileChooser& files, const SaveRequest& request);

struct OpenRequest {
    FileRequest dialog;
    NameRule use = {};       ///< none: as it was chosen
    std::string known = {};  ///< stands for the answer of the dialog
    std::size_t limit = std::size_t{1} << 30;
};

/// Asks for a file and hands its content and the name used to `read`, which may throw RuntimeError.
OpenOutcome AskAndRead(Prompts& prompts, FileChooser& files, const OpenRequest& request,
                       const std::function<void(const std::string& bytes, const std::string& name)>& read);

/// Takes a step on the file `name` and tells a RuntimeError of it by `ShowFileError`. @return whether it has succeeded
template <typename Step>
bool TakeFileStep(Prompts& prompts, const char* verb, const std::string& name, Step step) {
    try {
        step();
        return true;
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, verb, name);
        return false;
    }
}

}  // namespace kelvo
