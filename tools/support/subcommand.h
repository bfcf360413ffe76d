// What a sub-command is to the command line.
#pragma once

#include <functional>

#include "standardstreams.h"

namespace CLI {
class App;
}

namespace sorvane {
// The process's exit status.
enum class ExitStatus {
    Success = 0,
    ProblemsFound = 1, // the work was done, and what it looked at has faults or differs
    Failed = 2,        // the work could not be done, or was asked for wrongly
};

// A sub-command as it stands on the command line. Each one has a file of its own with a function that adds it:
//     SubCommand addInfoCommand(CLI::App& parent);
struct SubCommand {
    CLI::App* parser = nullptr; // owned by its parent; tells whether the sub-command was asked for
    std::function<ExitStatus(Streams&)> run;
};
} // namespace sorvane
