// Describes the description of a terrain set, and the tables that stand beside its tiles.
#pragma once

#include "inforecord.h"

InfoFault describeTerrain(const std::string& path, LengthUnit unit, InfoRecord& record);
InfoFault describeClassToAster(const std::string& path, InfoRecord& record);
InfoFault describeClassToMaterial(const std::string& path, InfoRecord& record);
InfoFault describeTemperatures(const std::string& path, InfoRecord& record);
InfoFault describeBand(const std::string& path, InfoRecord& record);
