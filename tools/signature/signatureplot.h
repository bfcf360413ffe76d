// Signatures as polar plots.
#pragma once

#include <vector>

#include "polarplot.h"
#include "signaturetables.h"

namespace sorvane {
// The intensities around the bodies at the elevation of the grid that is nearest. Of one body with its parts.
PolarDocument polarOf(const std::vector<NamedSignature>& signatures, double elevationDegrees);
} // namespace sorvane
