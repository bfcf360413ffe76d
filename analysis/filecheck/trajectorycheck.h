// Checks a trajectory file: what its lines hold, and whether the files that it names are there.
#pragma once

#include <optional>
#include <string>

#include "finding.h"
#include "trajectoryreader.h"

namespace sorvane {
// Kinds of findings.
inline constexpr const char* kMalformedNumbers = "malformed numbers";
inline constexpr const char* kMissingFiles = "missing files";
inline constexpr const char* kReplacedTargetFiles = "missing files of the target";

struct TrajectoryInput;

// Reads the trajectory at `path`, which was opened as `input`, as the viewer does. Nothing when it could not be opened.
// Answers the header, for the files behind it.
std::optional<TrajectoryFileHeader>
checkTrajectory(const TrajectoryInput& input, const std::string& path, FindingList& findings);
} // namespace sorvane
