#include "core/SaveAndOpen.h"

#include "core/Dialogs.h"
#include "text/Files.h"

namespace kelvo {

std::string WithEnding(std::string name, std::string_view ending) {
    if (LastPart(name).find('.') == std::string::npos) name += ending;
    return name;
}

std::string InFolder(const std::string& folder, const std::string& name) {
    return HasFolder(name) ? name : folder + name;
}

std::string UpperInFolder(const std::string& folder, const std::string& name) {
    return InFolder(folder, UpperName(NativePath(name)));
}

std::optional<std::string> AskNameToSave(Prompts& prompts, FileChooser& files, const SaveRequest& request) {
    for (std::string chosen = request.known;; chosen.clear()) {
        if (chosen.empty()) chosen = files.Save(request.dialog).value_or("");
        if (LastPart(chosen).empty()) return std::nullopt;
        std::string name = WithEnding(request.use ? request.use(chosen) : chosen, request.ending);
        if (request.refused && request.refused(name)) continue;
        if (MayReplace(prompts, name)) return name;
    }
}

OpenOutcome AskAndRead(Prompts& prompts, FileChooser& files, const OpenRequest& request,
                       const std::function<void(const std::string& bytes, const std::string& name)>& read) {
    std::string name = request.known.empty() ? files.Open(request.dialog).value_or("") : request.known;
    if (name.empty()) return OpenOutcome::Cancelled;
    if (request.use) name = request.use(name);
    if (!FileExists(name)) {
        prompts.Message("File" + name + "Not Found.", {}, Icon::Exclamation);
        return OpenOutcome::Missing;
    }
    return TakeFileStep(prompts, "Opening", name, [&] { read(ReadWholeFile(name, request.limit), name); })
               ? OpenOutcome::Opened
               : OpenOutcome::Failed;
}

}  // namespace kelvo
