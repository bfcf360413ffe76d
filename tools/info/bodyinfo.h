// Describes the files of a body, each by itself.
#pragma once

#include "inforecord.h"

InfoFault describeGeometry(const std::string& path, LengthUnit unit, InfoRecord& record);
InfoFault describeReflectance(const std::string& path, InfoRecord& record);
InfoFault describeBodyRadiance(const std::string& path, InfoRecord& record);
InfoFault describeFormFactors(const std::string& path, InfoRecord& record);
InfoFault describeAtmosphere(const std::string& path, InfoRecord& record);
InfoFault describeRotors(const std::string& path, LengthUnit unit, InfoRecord& record);
