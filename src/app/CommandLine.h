#pragma once

#include <optional>
#include <span>
#include <string>

namespace kelvo {

/// What the words behind `kelvo` ask for. They are looked at before there is a display.
struct CommandLine {
    std::optional<int> exitCode;  ///< the program ends at once with it
    std::string out, err;         ///< what it says then
    std::string file;             ///< to be opened in its screen, an absolute path; empty: none
};

/// Options of the toolkit are left to it; "--" ends the options.
/// @param version  "1.0.0"
CommandLine ReadCommandLine(std::span<const char* const> words, const std::string& version);

}  // namespace kelvo
