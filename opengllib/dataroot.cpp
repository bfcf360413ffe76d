// Where the installed data tree lies: models, terrain, shaders.
#include "dataroot.h"

#include <cstdlib>

namespace sorvane {
static_assert(sizeof SORVANE_DATA_ROOT > 1, "SORVANE_DATA_ROOT must name a folder");

std::string dataRoot() {
    const char* const fromEnvironment = std::getenv("PELSAR_DATA");
    std::string root = fromEnvironment != nullptr && *fromEnvironment != '\0' ? fromEnvironment : SORVANE_DATA_ROOT;
    if (root.back() != '/')
        root.push_back('/');
    return root;
}

std::string dataPath(std::string_view relativePath) {
    return dataRoot().append(relativePath);
}
} // namespace sorvane
