#pragma once

#include <string>
#include <utility>

#include "batch/RunBatch.h"

namespace kelvo {

/// What ends a command: told on standard error behind the program's name.
struct Failure {
    ExitCode code;
    std::string text;
};

[[noreturn]] inline void Refuse(ExitCode code, std::string text) {
    throw Failure{code, std::move(text)};
}

}  // namespace kelvo
