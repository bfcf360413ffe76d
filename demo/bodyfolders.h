// The folders of the demonstration's bodies.
#pragma once

#include <vector>

#include "demonstrationfile.h"

// Every file of every body; the names are below the data root.
std::vector<DemonstrationFile> bodyFiles();
