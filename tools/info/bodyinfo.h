// Describes the files of a body, each by itself.
#pragma once

#include "inforecord.h"

namespace sorvane {
std::optional<sorvane::Problem> describeGeometry(const std::string& path, LengthUnit unit, InfoRecord& record);
std::optional<sorvane::Problem> describeReflectance(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeBodyRadiance(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeFormFactors(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeAtmosphere(const std::string& path, InfoRecord& record);
std::optional<sorvane::Problem> describeRotors(const std::string& path, LengthUnit unit, InfoRecord& record);
} // namespace sorvane
