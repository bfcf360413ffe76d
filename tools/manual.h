// Writes the command's manual page.
#pragma once

#include <string>
#include <vector>

struct CommandDescription;

// A page for man(7), in section 1, with all sub-commands. `date` is "2026-11-21".
std::string manualPage(const CommandDescription& command, const std::string& version, const std::string& date);

// The commands of the section EXAMPLES, those of sub-commands that there are.
std::vector<std::string> manualExamples(const CommandDescription& command);
