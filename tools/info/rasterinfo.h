// Describes a raster of any family from its header, and tells whether its samples are all there.
#pragma once

#include "inforecord.h"

namespace sorvane {
std::optional<sorvane::Problem> describeRaster(const std::string& path, LengthUnit unit, InfoRecord& record);
} // namespace sorvane
