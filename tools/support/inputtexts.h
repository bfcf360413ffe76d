// What messages say about the files that a command line names.
#pragma once

#include <string>

namespace sorvane {
// How messages call `path`: "-" is standard input.
std::string inputName(const std::string& path);
} // namespace sorvane
