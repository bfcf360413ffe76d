// Checks a trajectory file: what its lines hold, and whether the files that it names are there.
#pragma once

#include <optional>
#include <string>

#include "finding.h"
#include "trajectoryreader.h"

namespace sorvane {
// Reads the trajectory at `path`, or standard input for "-", as the viewer does. Nothing when it can't be opened.
// Answers the header, for the files behind it.
std::optional<TrajectoryFileHeader> checkTrajectory(const std::string& path, FindingList& findings);
} // namespace sorvane
