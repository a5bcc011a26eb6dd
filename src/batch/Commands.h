#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "batch/Arguments.h"
#include "batch/RunBatch.h"
#include "batch/Workplace.h"

namespace kelvo {

/// One command of the tool. Everything that says what commands there are goes by the table of these.
struct Command {
    const char* name;
    const char* words;         ///< what follows the name: "FILE..."
    const char* summary;       ///< one line
    const char* more;          ///< paragraphs of its `--help`
    std::size_t fewest, most;  ///< words beside the options
    std::vector<Option> options;
    ExitCode (*run)(const Arguments&, const Streams&);
};
std::span<const Command> Commands();

/// Exit codes and what they mean, for `--help`.
struct ExitCodeRow {
    ExitCode code;
    const char* meaning;
};
std::span<const ExitCodeRow> ExitCodes();

ExitCode RunShow(const Arguments& arguments, const Streams& streams);
ExitCode RunConvert(const Arguments& arguments, const Streams& streams);
ExitCode RunMeasure(const Arguments& arguments, const Streams& streams);
ExitCode RunResult(const Arguments& arguments, const Streams& streams);
ExitCode RunAddition(const Arguments& arguments, const Streams& streams);
ExitCode RunCheck(const Arguments& arguments, const Streams& streams);
ExitCode RunFit(const Arguments& arguments, const Streams& streams);
ExitCode RunSelect(const Arguments& arguments, const Streams& streams);
ExitCode RunDilute(const Arguments& arguments, const Streams& streams);
ExitCode RunActivity(const Arguments& arguments, const Streams& streams);

}  // namespace kelvo
