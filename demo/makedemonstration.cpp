// Makes the demonstration data.
#include "makedemonstration.h"

#include <cctype>
#include <exception>
#include <system_error>

#include "datatree.h"
#include "engagements.h"
#include "landscapefiles.h"

namespace sorvane {
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

Failure make(
    const std::filesystem::path& directory, const std::filesystem::path& dataRoot, const std::function<bool()>& stops) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    const std::filesystem::path absolute = error ? directory : std::filesystem::canonical(directory, error);
    if (error)
        return "can not make the directory " + directory.string() + ": " + error.message();
    std::filesystem::path root = dataRoot.empty() ? absolute / "data" : dataRoot;
    if (!root.has_filename()) // a closing slash
        root = root.parent_path();
    const std::filesystem::path& named = dataRoot.empty() ? absolute : root;
    if (!survivesInAHeader(named.string()))
        return "the path " + named.string() + " has white space that trajectory files can not hold";

    for (const auto& files : {engagementFiles(root.string()), dataTreeFiles(), landscapeFiles(root.string())})
        for (const DemonstrationFile& file : files) {
            if (stops && stops())
                return "stopped; finished files stay";
            if (Failure failure = writeOutputFile(absolute / file.name, file.contents))
                return failure;
        }
    return std::nullopt;
}
} // namespace

Failure makeDemonstration(
    const std::filesystem::path& directory, const std::filesystem::path& dataRoot, const std::function<bool()>& stops) {
    try {
        return make(directory, dataRoot, stops);
    } catch (const std::exception& exception) {
        return exception.what();
    }
}
} // namespace sorvane
