// Reads a trajectory into a row of a set.
#pragma once

#include "runlayout.h"

namespace sorvane {
// A pure function of the file: may be called from several threads at once. A file that can't be read, or holds no
// samples, gives a row with its fault and its path's fields alone.
RunRow readRun(const std::string& path, const RunLayout& layout);
} // namespace sorvane
