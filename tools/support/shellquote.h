// Writes a command so that a shell reads it back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sorvane {
// `word` as one word of a POSIX shell.
std::string shellQuoted(std::string_view word);

// The words of a command with blanks between them.
std::string shellCommand(const std::vector<std::string>& words);
} // namespace sorvane
