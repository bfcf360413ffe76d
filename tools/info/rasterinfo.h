// Describes a raster of either family from its header, and tells whether its samples are all there.
#pragma once

#include "inforecord.h"

InfoFault describeRaster(const std::string& path, LengthUnit unit, InfoRecord& record);
