#pragma once

#include <string>

namespace kelvo::simulator {

class Simulation;

/// Runs one command line on the simulation. Words are told apart by blanks; `#` begins a remark; an empty line does
/// nothing. @return what to tell the user: an answer, or a line that starts with "error: " and changed nothing.
std::string RunCommand(Simulation& simulation, const std::string& line);

/// All commands with one line each.
std::string CommandHelp();

}  // namespace kelvo::simulator
