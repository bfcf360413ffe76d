// The three engagements of the demonstration.
#pragma once

#include <string>
#include <vector>

#include "demonstrationfile.h"

// Their trajectory files. `directory` is the absolute path of the demonstration's directory, without a closing slash:
// the headers name the files of the data tree in it.
std::vector<DemonstrationFile> engagementFiles(const std::string& directory);
