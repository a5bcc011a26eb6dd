#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/StateOf.h"
#include "core/Tables.h"

namespace kelvo {

class FileChooser;
class Prompts;

// The boxes of one addition screen as a file: ".smp" of frmSampa, ".std" of frmStanad01.

/// What a method screen holds.
struct MethodDump {
    int Ion = NoIon;            ///< `cmbIon.ListIndex`, -1 to 25
    float CommentHeight = 285;  ///< height of `labcomet`, which carries the layout of the comment
    std::string Comment;        ///< caption of `labcomet`
    std::array<std::string, 18> Box;
    bool surplus = false;  ///< the file went on behind the last box: its items stand in other boxes than they were in
};

/// Bytes of the file: `Str` of the ion, `Str` of the height, the comment and the boxes, a line each, no quotes.
std::string MethodDumpBytes(const MethodDump& dump);

/// Fills the dump item by item with list semantics, so a comma in the comment ends it and shifts what follows.
/// A file that ends behind the comment leaves the boxes alone.
/// @throws RuntimeError 62 short, 6 or 9 a number that the screen cannot take; what came before it stands as read.
void ReadMethodDump(MethodDump& dump, std::string_view bytes);

/// What tells the two method screens apart here.
struct MethodFile {
    const char* filter;
    const char* extension;
    const char* savedTitle;   ///< the caption after a save is this and the name
    const char* openedTitle;  ///< and after an open
};
extern const MethodFile SampleMethodFile;    ///< ".smp"
extern const MethodFile StandardMethodFile;  ///< ".std"

/// Asks for a name and saves; `StatusMessage` then says where to, and what will not open as it was. @return the new
/// caption of the screen; none when nothing was saved.
std::optional<std::string> SaveMethodDump(StateOf<const Paths, StatusMessages> state, const MethodDump& dump,
                                          const MethodFile& method, Prompts& prompts, FileChooser& files);

struct OpenedMethod {
    std::optional<MethodDump> dump;      ///< none when there was nothing to read, or it could not be read
    std::optional<std::string> caption;  ///< none: the screen keeps its own
};

/// Asks for a file and reads it. A bare name lies in the program's folder. A missing file is told and gives the
/// caption all the same; one that cannot be read is told and gives nothing.
OpenedMethod OpenMethodDump(const Paths& paths, const MethodFile& method, Prompts& prompts, FileChooser& files);

}  // namespace kelvo
