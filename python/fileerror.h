// What the module raises as sorvane.Error.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace sorvane {
// A file that can't be used, and where it is at fault. Line and column count from 1; 0 is none. `text` names the file.
struct FileError : std::runtime_error {
    FileError(const std::string& text, std::string path, std::int64_t faultLine = 0, std::int64_t faultColumn = 0)
        : std::runtime_error(text), file(std::move(path)), line(faultLine), column(faultColumn) {}

    std::string file; // empty for what is no file's fault
    std::int64_t line;
    std::int64_t column;
};
} // namespace sorvane
