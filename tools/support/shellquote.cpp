// Writes a command so that a shell reads it back.
#include "shellquote.h"

#include <algorithm>

namespace sorvane {
std::string shellQuoted(std::string_view word) {
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./,:=@+%";
    if (!word.empty() && word.find_first_not_of(kPlain) == std::string_view::npos)
        return std::string(word);
    std::string quoted = "'";
    for (const char c : word) {
        if (c == '\'')
            quoted += "'\\''";
        else
            quoted += c;
    }
    return quoted += '\'';
}

std::string shellCommand(const std::vector<std::string>& words) {
    std::string command;
    for (const std::string& word : words) {
        if (!command.empty())
            command += ' ';
        command += shellQuoted(word);
    }
    return command;
}
} // namespace sorvane
