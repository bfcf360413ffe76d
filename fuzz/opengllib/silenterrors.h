// Included once by a fuzz target whose reader reports every bad input: sends the reports to nowhere, which is faster
// than a terminal. The fuzzer's and the sanitizers' own output does not pass through this stream.
#pragma once

#include <cstdio>

inline const bool errorsAreSilent = [] {
    if (std::FILE* const nowhere = std::fopen("/dev/null", "w"))
        stderr = nowhere;
    return true;
}();
