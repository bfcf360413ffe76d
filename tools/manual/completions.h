// Writes what makes shells complete the command's arguments.
#pragma once

#include <string>

namespace sorvane {
struct CommandDescription;

// Scripts for the command and its sub-commands. Each is whole by itself: bash needs no package of completions.
std::string bashCompletion(const CommandDescription& command);
std::string zshCompletion(const CommandDescription& command); // a file "_<name>" in the search path of functions
std::string fishCompletion(const CommandDescription& command);
} // namespace sorvane
