#pragma once

#include <cstdint>
#include <string>

namespace kelvo {

/// Whether rows exist and where they go.
struct TableState {
    static constexpr const char* Declined = "-999";

    std::int16_t QuickCount = 0;
    std::int16_t TableOpen = 0;        ///< 1: rows exist
    std::string TableFile;             ///< empty: not asked yet, `Declined`: the analyst declined a file
    std::int16_t OpenCancelled = 0;    ///< 1: the file dialog of the last table open was cancelled
    std::int16_t HideTableOnBack = 0;  ///< -1: "Back" of the table screen only hides it
    std::int16_t ViewOnly = 0;         ///< 1: the recording screen shows a file and records nothing

    /// Whether rows have a file to go to.
    bool HasTableFile() const { return !TableFile.empty() && TableFile != Declined; }
};

}  // namespace kelvo
