#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "batch/RunBatch.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    // A reader that has seen enough, "| head", ends the tool in silence, whoever started it.
    std::signal(SIGPIPE, SIG_DFL);
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return kelvo::RunBatch(arguments, std::cin, std::cout, std::cerr);
}
