// Compares what printError wrote, except for the source line, which moves with every edit.
#pragma once

#include <string>

// The line for `message` as withoutSourceLines leaves it.
inline std::string errorLine(const std::string& function, const std::string& file, const std::string& message) {
    return "Error in function \"" + function + "\" of file \"" + file + "\" (line #): " + message + "\n";
}

// Takes the numbers out of every "(line #123)".
inline std::string withoutSourceLines(std::string captured) {
    const std::string mark = "(line #";
    for (std::size_t at = captured.find(mark); at != std::string::npos; at = captured.find(mark, at)) {
        at += mark.size();
        captured.erase(at, captured.find_first_not_of("0123456789", at) - at);
    }
    return captured;
}
