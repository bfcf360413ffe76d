// Makes the demonstration data.
#include "makedemonstration.h"

#include <cctype>
#include <exception>
#include <system_error>

#include "datatree.h"
#include "engagements.h"
#include "landscapefiles.h"

namespace {
// Whether a reader that collapses white space gets the path back as it is.
bool survivesInAHeader(const std::string& path) {
    bool afterBlank = true;
    for (const char character : path) {
        const bool isBlank = std::isspace(static_cast<unsigned char>(character)) != 0;
        if (isBlank && (afterBlank || character != ' '))
            return false;
        afterBlank = isBlank;
    }
    return true;
}

Failure make(const std::filesystem::path& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    const std::filesystem::path absolute = error ? directory : std::filesystem::canonical(directory, error);
    if (error)
        return "can not make the directory " + directory.string() + ": " + error.message();
    if (!survivesInAHeader(absolute.string()))
        return "the path " + absolute.string() + " has white space that trajectory files can not hold";

    for (const auto& files : {engagementFiles(absolute.string()), dataTreeFiles(), landscapeFiles(absolute.string())})
        for (const DemonstrationFile& file : files)
            if (Failure failure = writeOutputFile(absolute / file.name, file.contents))
                return failure;
    return std::nullopt;
}
} // namespace

Failure makeDemonstration(const std::filesystem::path& directory) {
    try {
        return make(directory);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}
