// Writes the command's manual page.
#pragma once

#include <string>
#include <vector>

namespace sorvane {
struct CommandDescription;

// What the page says that does not follow from the command's definition.
struct ManualFacts {
    std::string version;
    std::string date;     // "2026-11-21"
    std::string dataRoot; // where stock models and terrain lie when the environment doesn't say
};

// A page for man(7), in section 1, with all sub-commands.
std::string manualPage(const CommandDescription& command, const ManualFacts& facts);

// The commands of the section EXAMPLES, those of sub-commands that there are.
std::vector<std::string> manualExamples(const CommandDescription& command);
} // namespace sorvane
