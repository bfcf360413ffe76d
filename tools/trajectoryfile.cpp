// Reads a trajectory for the sub-commands: its header and samples, none of the files that it names.
#include "trajectoryfile.h"

#include <cstdio>
#include <utility>

#include <QFile>

#include "filekind.h"
#include "trajectoryinput.h"

namespace {
TrajectoryInput openInput(const std::string& path) {
    if (path != "-")
        return openTrajectory(QFile::decodeName(path.c_str()));
    auto input = std::make_unique<QFile>();
    if (!input->open(stdin, QIODevice::ReadOnly))
        return {};
    return {std::move(input), false};
}
} // namespace

std::optional<TrajectoryFile> readTrajectoryFile(const std::string& path, std::string& problem) {
    const TrajectoryInput input = openInput(path);
    if (input.device == nullptr) {
        problem = inputName(path) + ": can't be opened";
        return std::nullopt;
    }
    if (path != "-" && fileKindOf(path) != FileKind::Trajectory) {
        problem = path + ": not a trajectory";
        return std::nullopt;
    }
    TrajectoryFile file;
    file.header = readTrajectoryHeader(input.device.get(), input.isProcess);
    file.samples = readRecords(input.device.get(), input.isProcess);
    if (file.samples.isEmpty()) {
        problem = inputName(path) + ": holds no samples";
        return std::nullopt;
    }
    return file;
}

std::string inputName(const std::string& path) {
    return path == "-" ? "standard input" : path;
}
