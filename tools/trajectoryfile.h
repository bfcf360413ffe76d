// Reads a trajectory for the sub-commands: its header and samples, none of the files that it names.
#pragma once

#include <optional>
#include <string>

#include <QMap>

#include "trajectoryreader.h"

struct TrajectoryFile {
    TrajectoryFileHeader header;
    QMap<double, keyframe> samples; // at least one
};

// The trajectory at `path`; "-" is standard input. Nothing, with the reason in `problem`, when it can't be opened, is
// something else or holds no samples.
std::optional<TrajectoryFile> readTrajectoryFile(const std::string& path, std::string& problem);

// How messages call `path`.
std::string inputName(const std::string& path);
