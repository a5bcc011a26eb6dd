#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "batch/RunBatch.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {

/// What a run of the tool has left.
struct BatchRun {
    int code = 0;
    std::string out, err;
};

/// Runs the tool with words parted by blanks; a '~' at the head of a word stands for the scratch folder.
inline BatchRun Batch(const ScratchFolder& folder, const std::string& words, const std::string& input = {}) {
    std::istringstream parted(words);
    std::vector<std::string> arguments;
    for (std::string word; parted >> word;)
        arguments.push_back(word.starts_with('~') ? folder / word.substr(1) : word);
    std::istringstream in(input);
    std::ostringstream out, err;
    BatchRun run;
    run.code = RunBatch(arguments, in, out, err);
    run.out = out.str();
    run.err = err.str();
    return run;
}

inline std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    return lines;
}

}  // namespace kelvo::test
