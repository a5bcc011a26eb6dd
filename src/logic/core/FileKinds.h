#pragma once

#include <span>
#include <string>

#include "core/ScreenCode.h"
#include "core/StateOf.h"

namespace kelvo {

/// What a file of Kelvo holds. All are text without a mark at the head, so the ending of the name decides.
enum class FileKind {
    IseCalibration,
    PhCalibration,
    Table,  ///< of direct potentiometry, or of a recording with an ion-selective electrode
    PhTable,
    PhRecording,
    SampleAdditionTable,
    StandardAdditionTable,
    SampleAddition,
    StandardAddition,
    RecordingNumbers,
    Settings,
    Journal,
    Text,
};

/// One kind, as every place that goes by a file's kind knows it.
struct FileKindRow {
    FileKind kind;
    const char* ending;  ///< with its dot
    const char* key;     ///< for machines, "ise-calibration"
    const char* name;    ///< for people
    ScreenCode screen;   ///< that works with such a file; None where no screen opens one
    bool ph;             ///< it belongs to the pH path
};
std::span<const FileKindRow> FileKindRows();

/// Kind by the ending of the name, without regard to case; the "~" of a kept previous version does not count.
/// @return null for a name that none of Kelvo's files has
const FileKindRow* FileKindOf(const std::string& path);

}  // namespace kelvo
