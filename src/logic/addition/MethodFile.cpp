#include "addition/MethodFile.h"

#include <algorithm>
#include <utility>

#include "core/Dialogs.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "text/Backup.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/Records.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Whether a text holds what ends an item when it is read.
bool OpensShifted(const MethodDump& dump) {
    const auto ends = [](const std::string& text) { return text.find_first_of(",\"") != std::string::npos; };
    return ends(dump.Comment) || std::any_of(dump.Box.begin(), dump.Box.end(), ends);
}

}  // namespace

const MethodFile SampleMethodFile = {"All Data(*.smp)|*.smp", ".smp",
                                     "SAMPLE ADDITION METHOD:", "SAMPLE ADDITION METHOD:"};
const MethodFile StandardMethodFile = {"All Data(*.std)|*.std", ".std",
                                       "STANDARD ADDITION METHOD:", "SATNDARD ADDITION METHOD:"};

std::string MethodDumpBytes(const MethodDump& dump) {
    RecordWriter writer;
    writer.Print(Str(dump.Ion));
    writer.Print(Str(dump.CommentHeight));
    writer.Print(dump.Comment);
    for (const std::string& box : dump.Box)
        writer.Print(box);
    return writer.Bytes();
}

void ReadMethodDump(MethodDump& dump, std::string_view bytes) {
    RecordReader reader(bytes);
    const int ion = ToInt16(Val(reader.Item()));
    if (ion < NoIon || ion >= IonRows) throw RuntimeError(ErrorNumber::Subscript);
    dump.Ion = ion;
    dump.CommentHeight = ToSingle(Val(reader.Item()));
    dump.Comment = reader.Item();
    if (reader.AtEnd()) return;
    for (std::string& box : dump.Box)
        box = reader.Item();
    dump.surplus = !reader.AtEnd();
}

std::optional<std::string> SaveMethodDump(StateOf<const Paths, StatusMessages> state, const MethodDump& dump,
                                          const MethodFile& method, Prompts& prompts, FileChooser& files) {
    const Paths& paths = state;
    StatusMessages& status = state;
    const std::optional<std::string> chosen = files.Save({method.filter, paths.DataPath, {}});
    if (!chosen || chosen->empty()) return std::nullopt;
    // Not asked before it replaces a file, which stays as a backup.
    const std::string name = WithEnding(*chosen, method.extension);
    const bool saved = TakeFileStep(prompts, "Saving", name, [&] {
        const bool kept = ReplaceKeepingBackup(FindFile(name), MethodDumpBytes(dump)).kept;
        status.StatusMessage = "Saved to " + LastPart(name) + ".";
        if (!kept) status.StatusMessage += " The previous version could not be kept.";
        if (OpensShifted(dump))
            status.StatusMessage +=
                " It holds a comma: opened again, every box behind it will stand one place further on.";
    });
    return saved ? std::optional(method.savedTitle + name) : std::nullopt;
}

OpenedMethod OpenMethodDump(const Paths& paths, const MethodFile& method, Prompts& prompts, FileChooser& files) {
    std::string name;
    MethodDump dump;
    const auto use = [&](const std::string& chosen) { return name = InFolder(paths.AppPath, chosen); };
    const OpenOutcome outcome =
        AskAndRead(prompts, files, {.dialog = {method.filter, paths.DataPath, {}}, .use = use},
                   [&](const std::string& bytes, const std::string&) { ReadMethodDump(dump, bytes); });
    if (outcome == OpenOutcome::Cancelled || outcome == OpenOutcome::Failed) return {};
    OpenedMethod opened{std::nullopt, method.openedTitle + name};
    if (outcome == OpenOutcome::Opened) opened.dump = std::move(dump);
    return opened;
}

}  // namespace kelvo
