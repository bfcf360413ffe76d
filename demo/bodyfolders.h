// The folders of the demonstration's bodies.
#pragma once

#include <vector>

#include "demonstrationfile.h"

namespace sorvane {
// The names are below the data root.

// Every file of every body but the form factors.
std::vector<DemonstrationFile> bodyFiles();
// The form factors of the jet and the missile, which take most of the time.
std::vector<DemonstrationFile> formFactorFiles();
} // namespace sorvane
