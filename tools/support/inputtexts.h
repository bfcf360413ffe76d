// What messages say about the files that a command line names.
#pragma once

#include <string>

// How messages call `path`: "-" is standard input.
std::string inputName(const std::string& path);

// Why `path` can't be opened, such as "there is no such file".
std::string openFault(const std::string& path);
