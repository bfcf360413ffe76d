// Writes the text of a trajectory with the shortest numbers that read back equal.
#pragma once

#include <string>

#include "exactreader.h"

namespace sorvane {
// A line for each line that readers ask for, after its comments. Words that nothing asks for are left out.
std::string writtenTrajectory(const ExactTrajectory& trajectory);
} // namespace sorvane
