// The engagements of the demonstration.
#pragma once

#include <string>
#include <vector>

#include "demonstrationfile.h"

namespace sorvane {
// Their trajectory files, in the order of their names: what is seen first comes first. `dataRoot` is the absolute path
// of the data tree, without a closing slash: the headers name the files in it.
std::vector<DemonstrationFile> engagementFiles(const std::string& dataRoot);
} // namespace sorvane
