// Checks a trajectory file: what its lines hold, and whether the files that it names are there.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "finding.h"
#include "trajectoryreader.h"

namespace sorvane {
// Kinds of findings.
inline constexpr const char* kMalformedNumbers = "malformed numbers";
inline constexpr const char* kMissingFiles = "missing files";
inline constexpr const char* kReplacedTargetFiles = "missing files of the target";

struct TrajectoryInput;

// Whether a finding tells of something that keeps the data from being what the file says. Not so the files that a
// trajectory names, which may lie elsewhere.
inline bool isLoss(const Finding& finding) {
    return finding.severity == Severity::Error && finding.kind != kMissingFiles;
}
// Those of the trajectory at `path`, by place.
std::vector<Finding> lossesIn(const std::string& path);

// Reads the trajectory at `path`, which was opened as `input`, as the viewer does. Nothing when it could not be opened.
// Answers the header, for the files behind it.
std::optional<TrajectoryFileHeader>
checkTrajectory(const TrajectoryInput& input, const std::string& path, FindingList& findings);
} // namespace sorvane
