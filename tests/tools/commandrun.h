// Runs the command in the test's own process.
#pragma once

#include <string>
#include <vector>

#include "subcommand.h"

namespace sorvane {
struct CommandRun {
    ExitStatus status = ExitStatus::Failed;
    std::string out; // standard output
    std::string err; // standard error
};

// `sorvane` with these arguments, its name not among them.
CommandRun runCommand(const std::vector<std::string>& arguments);
} // namespace sorvane
