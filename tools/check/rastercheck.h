// Checks a raster file of any family.
#pragma once

#include <string>

#include "finding.h"

namespace sorvane {
// What the raster holds follows from the file's extension; of another extension only the header is checked.
void checkRaster(const std::string& path, FindingList& findings);
} // namespace sorvane
