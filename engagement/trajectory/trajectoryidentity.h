// What a trajectory file looks like from outside, before it is read.
#pragma once

#include <string_view>

#include "texthead.h"

namespace sorvane {
// By a name that trajectories have, without folder: whatever the file holds, it is taken for one.
bool isNamedLikeTrajectory(std::string_view fileName);

// Whether a text of any name begins like a trajectory: twelve lines, of which the fourth and fifth are three numbers
// each and the first three, the sixth and the seventh are paths, and then a time and an identifier.
bool looksLikeTrajectory(const TextHead& head);
} // namespace sorvane
