// Reads a trajectory into a row of a set.
#include "runreading.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "inputtexts.h"
#include "measure.h"
#include "shortestnumber.h"
#include "trajectorycheck.h"
#include "trajectoryfile.h"
#include "trajectoryheaderfields.h"
#include "writtenvalues.h"

namespace sorvane {
namespace {
RunValue numberValue(double value) {
    return std::isfinite(value) ? RunValue(value) : RunValue();
}

struct HeaderValue {
    const TrajectoryFileHeader& header;

    RunValue operator()(TrajectoryHeaderField::Text member) const { return (header.*member).toStdString(); }
    RunValue operator()(TrajectoryHeaderField::Integer member) const { return std::int64_t{header.*member}; }
    RunValue operator()(TrajectoryHeaderField::Number member) const {
        return numberValue(shortestDouble(header.*member));
    }
    RunValue operator()(TrajectoryHeaderField::Triple member) const {
        std::string text;
        for (const float number : header.*member)
            text += (text.empty() ? "" : " ") + shortestText(number);
        return text;
    }
};

struct Faults {
    std::int64_t count = 0;
    std::string first;
};

Faults wholeFileFault(std::string text) {
    return {1, std::move(text)};
}

// What its lines lack.
Faults faultsOf(const std::string& path) {
    Faults faults;
    for (const Finding& loss : lossesIn(path)) {
        if (faults.count == 0)
            faults.first = "line " + std::to_string(loss.place.line) + ": " + loss.text;
        faults.count += loss.count;
    }
    return faults;
}

// A row names its file already.
std::string withoutName(const std::string& problem, const std::string& path) {
    const std::string name = inputName(path) + ": ";
    return problem.starts_with(name) ? problem.substr(name.size()) : problem;
}

// Puts all but the path's fields into `values`.
Faults read(const std::string& path, LengthUnit unit, std::vector<RunValue>& values) {
    const Outcome<TrajectorySamples> trajectory = readTrajectorySamples(path);
    if (!trajectory)
        return wholeFileFault(withoutName(trajectory.problem().text, path));
    const SampleSeries& series = trajectory->series;
    const MeasuredEngagement measured(series, trajectory->header.fieldOfView, unit);
    const EngagementResults results = resultsOf(measured);
    auto value = values.begin() + 2; // after the faults
    *value++ = static_cast<std::int64_t>(series.samples().size());
    *value++ = static_cast<std::int64_t>(measured.tracks().size());
    *value++ = numberValue(series.samples().front().time);
    *value++ = numberValue(series.samples().back().time);
    for (const TrajectoryHeaderField& field : kTrajectoryHeaderFields)
        *value++ = std::visit(HeaderValue{trajectory->header}, field.member);
    for (const Measure& measure : allMeasures())
        if (measure.isOfEngagement())
            *value++ = numberValue(writtenOf(results, measure));
    return trajectory->isWhollyRead ? Faults() : faultsOf(path);
}
} // namespace

RunRow readRun(const std::string& path, const RunLayout& layout) {
    RunRow row{path, runStamp(path), std::vector<RunValue>(layout.columns().size())};
    Faults faults;
    try {
        faults = read(path, layout.unit(), row.values);
    } catch (const std::bad_alloc&) {
        faults = wholeFileFault("there is not enough memory to read it");
    }
    row.values[0] = faults.count;
    if (faults.count > 0)
        row.values[1] = std::move(faults.first);
    const std::vector<RunValue> fields = layout.pathFields(path);
    std::ranges::copy(fields, row.values.end() - static_cast<std::ptrdiff_t>(fields.size()));
    return row;
}
} // namespace sorvane
