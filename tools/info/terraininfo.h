// Describes the description of a terrain set, and the tables that stand beside its tiles.
#pragma once

#include "inforecord.h"

namespace sorvane {
std::optional<sorvane::Problem> describeTerrain(const std::string& path, LengthUnit unit, InfoRecord& record);
std::optional<sorvane::Problem> describeClassToAster(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeClassToMaterial(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeTemperatures(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeBand(const std::string& path, InfoRecord& record);
} // namespace sorvane
