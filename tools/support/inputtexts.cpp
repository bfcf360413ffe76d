// What messages say about the files that a command line names.
#include "inputtexts.h"

#include <filesystem>

namespace sorvane {
std::string inputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

sorvane::Problem problemOfOpening(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (!std::filesystem::exists(status))
        return {"there is no such file"};
    return {std::filesystem::is_regular_file(status) ? "can't be opened" : "is not a regular file"};
}
} // namespace sorvane
