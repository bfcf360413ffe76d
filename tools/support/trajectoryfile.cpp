// Opens and reads trajectories for the sub-commands, from files and from standard input.
#include "trajectoryfile.h"

#include <cstdio>
#include <utility>

#include <QFile>

#include "filekind.h"
#include "inputtexts.h"

namespace sorvane {
TrajectoryInput openTrajectoryAt(const std::string& path) {
    if (path != "-")
        return openTrajectory(QFile::decodeName(path.c_str()));
    // By way of the C stream: the lines are read as from a file, however small a pipe's pieces are.
    auto input = std::make_unique<QFile>();
    if (!input->open(stdin, QIODevice::ReadOnly))
        return {};
    return {std::move(input), false};
}

sorvane::Outcome<TrajectoryInput> openTrajectoryFile(const std::string& path) {
    TrajectoryInput input = openTrajectoryAt(path);
    if (input.device == nullptr)
        return sorvane::Problem(inputName(path) + ": " + problemOfOpening(path).text);
    if (path != "-" && fileKindOf(path) != FileKind::Trajectory)
        return sorvane::Problem(inputName(path) + ": is no trajectory");
    return input;
}

std::optional<sorvane::Problem>
problemOfReading(const TrajectoryInput& input, bool hasSamples, const std::string& path) {
    if (!input.cameWhole())
        return sorvane::Problem(inputName(path) + ": its compressed data are damaged or cut short");
    if (!hasSamples)
        return sorvane::Problem(inputName(path) + ": holds no samples");
    return std::nullopt;
}

sorvane::Outcome<TrajectoryFile> readTrajectoryFile(const std::string& path) {
    const sorvane::Outcome<TrajectoryInput> input = openTrajectoryFile(path);
    if (!input)
        return input.problem();
    TrajectoryFile file;
    file.header = readTrajectoryHeader(input->device.get(), input->isProcess);
    file.samples = readRecords(input->device.get(), input->isProcess);
    if (const auto problem = problemOfReading(*input, !file.samples.isEmpty(), path))
        return *problem;
    return file;
}
} // namespace sorvane
