// Where the installed data tree lies: models, terrain, shaders.
#pragma once

#include <string>
#include <string_view>

namespace sorvane {
// The data root with its closing slash: the environment variable PELSAR_DATA when it is set and not empty, else the
// root compiled in (CMake variable SORVANE_DATA_ROOT, by default "/usr/local/pelsar/data/").
std::string dataRoot();

// dataRoot() followed by `relativePath`, for example dataPath("openglshaders/").
std::string dataPath(std::string_view relativePath);
} // namespace sorvane
