// The light in which a body stands in the world.
#pragma once

#include "facetshading.h"
#include "sample.h"

class AtmFile;

namespace sorvane {
// Of a body with this roll, pitch and yaw in degrees, the sun where the viewer has it.
SignatureLight lightAt(const AtmFile& atmosphere, const Triple& attitudeDegrees);
} // namespace sorvane
