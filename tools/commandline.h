// The command line of `sorvane`: its sub-commands and the way to the one that is asked for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "subcommand.h"

namespace sorvane {
// The parser with all sub-commands. The definitions of the options live here and nowhere else: manual and completions
// are made from them.
struct CommandLine {
    std::unique_ptr<CLI::App> parser;
    std::vector<SubCommand> subCommands;

    CommandLine();
    ~CommandLine();
};

// Parses the arguments, without the program's name, and runs the sub-command.
ExitStatus runCommandLine(std::vector<std::string> arguments, Streams& streams);
} // namespace sorvane
