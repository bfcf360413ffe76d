// Opens and reads trajectories for the sub-commands, from files and from standard input.
#include "trajectoryfile.h"

#include <cstdio>
#include <utility>

#include <QFile>

#include "filekind.h"
#include "inputtexts.h"
#include "openingproblem.h"

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
    if (const auto problem = problemOfInput(input, path))
        return sorvane::Problem(inputName(path) + ": " + problem->text);
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

namespace {
// Hands out the records of a trajectory that has some. `isWhollyRead` says whether every word was there and a number.
std::optional<sorvane::Problem>
readTrajectory(const std::string& path, TrajectoryFileHeader& header, bool& isWhollyRead, const RecordSink& take) {
    const sorvane::Outcome<TrajectoryInput> input = openTrajectoryFile(path);
    if (!input)
        return input.problem();
    header = readTrajectoryHeader(input->device.get(), input->isProcess);
    bool hasSamples = false;
    const auto takeSample = [&](const Sample& sample, const std::vector<Flare>& flares) {
        hasSamples = true;
        take(sample, flares);
    };
    const RecordsEnd end = readEachRecord(input->device.get(), input->isProcess, takeSample);
    isWhollyRead = header.isWhole && end.isWhole && end.isAllConverted;
    return problemOfReading(*input, hasSamples, path);
}
} // namespace

sorvane::Outcome<TrajectoryFile> readTrajectoryFile(const std::string& path) {
    TrajectoryFile file;
    const auto take = [&](const Sample& sample, const std::vector<Flare>& flares) {
        file.samples.push_back({sample, flares});
    };
    bool isWhollyRead = true;
    if (const auto problem = readTrajectory(path, file.header, isWhollyRead, take))
        return *problem;
    orderByTime(file.samples);
    return file;
}

sorvane::Outcome<TrajectorySamples> readTrajectorySamples(const std::string& path) {
    TrajectorySamples read;
    const auto take = [&](const Sample& sample, const std::vector<Flare>& flares) {
        read.series.add(sample, flares);
    };
    if (const auto problem = readTrajectory(path, read.header, read.isWhollyRead, take))
        return *problem;
    read.series.putInOrder();
    return read;
}
} // namespace sorvane
