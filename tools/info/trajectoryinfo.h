// Describes a trajectory: what its header says, which files the viewer takes, and the encounter in numbers.
#pragma once

#include "inforecord.h"

namespace sorvane {
// Reads the trajectory as the viewer does, but neither its bodies nor its terrain; "-" is standard input.
std::optional<sorvane::Problem> describeTrajectory(const std::string& path, LengthUnit unit, InfoRecord& record);
} // namespace sorvane
