// The shaders that the viewer draws with.
#pragma once

#include <vector>

#include "demonstrationfile.h"

namespace sorvane {
// Their sources; the names are below the data root.
std::vector<DemonstrationFile> shaderSources();
} // namespace sorvane
