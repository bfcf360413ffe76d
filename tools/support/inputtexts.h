// What messages say about the files that a command line names.
#pragma once

#include <string>

#include "problem.h"

namespace sorvane {
// How messages call `path`: "-" is standard input.
std::string inputName(const std::string& path);

// Why `path` can't be opened, such as "there is no such file".
sorvane::Problem problemOfOpening(const std::string& path);
} // namespace sorvane
