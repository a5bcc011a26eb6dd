#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "core/Dialogs.h"

namespace kelvo {

// Dump files: the boxes of one addition screen (".smp" of frmSampa, ".std" of frmStanad01), and the numbers of a
// recording (".PH", which no menu leads to).

/// What a method screen holds.
struct MethodDump {
    int Ion = NoIon;            ///< `cmbIon.ListIndex`, -1 to 25
    float CommentHeight = 285;  ///< height of `labcomet`, which carries the layout of the comment
    std::string Comment;        ///< caption of `labcomet`
    std::array<std::string, 18> Box;
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

/// Asks for a name and saves. @return the new caption of the screen; none when nothing was saved.
std::optional<std::string> SaveMethodDump(AppState& state, const MethodDump& dump, const MethodFile& method,
                                          Prompts& prompts, FileChooser& files);

/// Asks for a file and reads it into `dump`, which the screen has emptied. A bare name lies in the program's folder.
/// A missing file is told and sets the caption all the same; so is one that cannot be read.
/// @return the new caption; none when no file was chosen.
std::optional<std::string> OpenMethodDump(AppState& state, MethodDump& dump, const MethodFile& method, Prompts& prompts,
                                          FileChooser& files);

/// The numbers of a recording.
struct RecordingDump {
    std::int16_t PointCount = 0;  ///< N, 0 to 200
    float ScaleSpan = 0;
    std::int16_t ChannelCount = 0;  ///< C, 0 to 6
    std::int16_t IntervalIndex = 0, ScaleIndex = 0;
    std::vector<std::array<float, 6>> Recording;  ///< points 0 to N; the file holds 1 to N
};
std::string RecordingDumpBytes(const RecordingDump& dump);
/// Stops filling at the end of the file. @throws RuntimeError 62 within the first five numbers, 6 or 9 for a count
/// or number that no recording has.
RecordingDump ReadRecordingDump(std::string_view bytes);

}  // namespace kelvo
