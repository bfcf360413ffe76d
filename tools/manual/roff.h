// Text as roff takes it.
#pragma once

#include <string>

namespace sorvane {
// Text between requests and macros: every character prints as itself.
std::string roffText(const std::string& text);

// Text with a hyphen in it that readers can copy, such as an option's name.
std::string roffLiteral(const std::string& text);

// A paragraph's text in lines of at most 78 characters, a sentence to a line where one ends within a line, each with
// its line end.
std::string roffFilled(const std::string& escaped);
} // namespace sorvane
