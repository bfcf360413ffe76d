// What a command offers, taken from the definitions of its options: what manual and completions are made from.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace sorvane {
// How a value is completed. It follows from the metavariable: FILE, PATH, OUT and what begins with one of them is a
// file, DIR a directory. A positional argument without choices is a file too.
enum class ValueKind { None, Text, Choice, File, Directory };

struct OptionDescription {
    std::vector<std::string> names; // with their hyphens, short ones first; empty for a positional argument
    std::string metavariable;       // such as "OUT"; empty for a flag
    std::string description;
    std::string defaultText; // empty without one
    ValueKind value = ValueKind::None;
    std::vector<std::string> choices;
    bool isRequired = false;
    bool isRepeatable = false; // takes several values
};

struct CommandDescription {
    std::string name;
    std::string description; // without its full stop
    std::string footer;
    std::vector<OptionDescription> arguments; // positional ones
    std::vector<OptionDescription> options;
    std::vector<CommandDescription> subCommands; // those that are not hidden
};

CommandDescription describe(const CLI::App& command);
} // namespace sorvane
