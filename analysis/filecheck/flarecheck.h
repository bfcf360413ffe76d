// Whether the flares of a trajectory can be seen.
#pragma once

#include "finding.h"
#include "flaregrey.h"

namespace sorvane {
// Call once, after the last sample.
void reportBlackFlares(const BrightestFlares& flares, FindingList& findings);
} // namespace sorvane
