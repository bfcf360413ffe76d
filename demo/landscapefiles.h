// All files of the demonstration's landscape.
#pragma once

#include <string>
#include <vector>

#include "demonstrationfile.h"

// Below the data tree, in the old style and as a described set; the names begin with "data/". `directory` is the
// absolute path of the demonstration's directory, without a closing slash.
std::vector<DemonstrationFile> landscapeFiles(const std::string& directory);
