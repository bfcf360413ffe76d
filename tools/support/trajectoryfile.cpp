// Opens and reads trajectories for the sub-commands, from files and from standard input.
#include "trajectoryfile.h"

#include <cstdio>
#include <utility>

#include <QFile>

#include "filekind.h"
#include "inputtexts.h"

TrajectoryInput openTrajectoryAt(const std::string& path) {
    if (path != "-")
        return openTrajectory(QFile::decodeName(path.c_str()));
    // By way of the C stream: the lines are read as from a file, however small a pipe's pieces are.
    auto input = std::make_unique<QFile>();
    if (!input->open(stdin, QIODevice::ReadOnly))
        return {};
    return {std::move(input), false};
}

sorvane::Outcome<TrajectoryFile> readTrajectoryFile(const std::string& path) {
    const auto fail = [&](const std::string& reason) {
        return sorvane::Problem(inputName(path) + ": " + reason);
    };
    const TrajectoryInput input = openTrajectoryAt(path);
    if (input.device == nullptr)
        return fail(problemOfOpening(path).text);
    if (path != "-" && fileKindOf(path) != FileKind::Trajectory)
        return fail("is no trajectory");
    TrajectoryFile file;
    file.header = readTrajectoryHeader(input.device.get(), input.isProcess);
    file.samples = readRecords(input.device.get(), input.isProcess);
    if (!input.cameWhole())
        return fail("its compressed data are damaged or cut short");
    if (file.samples.isEmpty())
        return fail("holds no samples");
    return file;
}
