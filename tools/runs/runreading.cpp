// Reads a trajectory into a row of a set.
#include "runreading.h"

#include <algorithm>
#include <new>

#include "inputtexts.h"
#include "runvalues.h"
#include "trajectoryfile.h"

namespace sorvane {
namespace {
RunFaults wholeFileFault(std::string text) {
    return {1, std::move(text)};
}

// A row names its file already.
std::string withoutName(const std::string& problem, const std::string& path) {
    const std::string name = inputName(path) + ": ";
    return problem.starts_with(name) ? problem.substr(name.size()) : problem;
}

// Puts all but the path's fields into `values`.
RunFaults
read(const std::string& path, const RunLayout& layout, RunRadiometry* radiometry, std::vector<RunValue>& values) {
    const Outcome<TrajectorySamples> trajectory = readTrajectorySamples(path);
    if (!trajectory)
        return wholeFileFault(withoutName(trajectory.problem().text, path));
    MeasuredEngagement measured(trajectory->series, trajectory->header.fieldOfView, layout.unit());
    if (radiometry != nullptr && radiometry->radiometer.measure(trajectory->header, measured))
        ++radiometry->lacking;
    putEngagement(trajectory->header, measured, values, layout.radiation());
    return trajectory->isWhollyRead ? RunFaults() : lineFaults(path);
}
} // namespace

RunRow readRun(const std::string& path, const RunLayout& layout, RunRadiometry* radiometry) {
    RunRow row{path, runStamp(path), std::vector<RunValue>(layout.columns().size())};
    RunFaults faults;
    try {
        faults = read(path, layout, radiometry, row.values);
    } catch (const std::bad_alloc&) {
        faults = wholeFileFault("there is not enough memory to read it");
    }
    putFaults(std::move(faults), row.values);
    const std::vector<RunValue> fields = layout.pathFields(path);
    std::ranges::copy(fields, row.values.end() - static_cast<std::ptrdiff_t>(fields.size()));
    return row;
}
} // namespace sorvane
