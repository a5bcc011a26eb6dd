#include "core/FileKinds.h"

#include <array>
#include <string_view>

#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using enum FileKind;

constexpr std::array Rows = {
    FileKindRow{IseCalibration, ".ISE", "ise-calibration", "calibration of an ion-selective electrode",
                ScreenCode::fmISEcli, false},
    FileKindRow{PhCalibration, ".CLI", "ph-calibration", "calibration of the pH electrodes", ScreenCode::frmenu, true},
    FileKindRow{Table, ".TAB", "table", "table of ISE measurements", ScreenCode::fmISEcli, false},
    FileKindRow{PhTable, ".PHT", "ph-table", "table of pH measurements", ScreenCode::frmDsply, true},
    FileKindRow{PhRecording, ".PHC", "ph-recording", "recording of pH", ScreenCode::frmPHMe, true},
    FileKindRow{SampleAdditionTable, ".SMT", "sample-addition-table", "table of sample additions", ScreenCode::frmSampa,
                false},
    FileKindRow{StandardAdditionTable, ".SDT", "standard-addition-table", "table of standard additions",
                ScreenCode::frmStanad01, false},
    FileKindRow{SampleAddition, ".SMP", "sample-addition", "sample addition", ScreenCode::frmSampa, false},
    FileKindRow{StandardAddition, ".STD", "standard-addition", "standard addition", ScreenCode::frmStanad01, false},
    FileKindRow{RecordingNumbers, ".PH", "recording-numbers", "numbers of a recording", ScreenCode::None, true},
    FileKindRow{Settings, ".INI", "settings", "settings", ScreenCode::None, false},
    FileKindRow{Journal, ".JOURNAL", "journal", "journal of a recording", ScreenCode::None, false},
    FileKindRow{Text, ".TXT", "text", "text or notes", ScreenCode::None, false},
};

}  // namespace

std::span<const FileKindRow> FileKindRows() {
    return Rows;
}

const FileKindRow* FileKindOf(const std::string& path) {
    std::string name = LastPart(path);
    if (name.ends_with('~')) name.pop_back();
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) return nullptr;
    const std::string_view ending = std::string_view(name).substr(dot);
    for (const FileKindRow& row : Rows)
        if (EqualNoCase(row.ending, ending)) return &row;
    return nullptr;
}

}  // namespace kelvo
