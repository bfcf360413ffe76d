// All files of the demonstration's landscape.
#pragma once

#include <string>
#include <vector>

#include "demonstrationfile.h"

namespace sorvane {
// Below the data tree, in the old style and as a described set; the names begin with "data/". `dataRoot` is the
// absolute path of the data tree as it is to be used, without a closing slash.
std::vector<DemonstrationFile> landscapeFiles(const std::string& dataRoot);
} // namespace sorvane
