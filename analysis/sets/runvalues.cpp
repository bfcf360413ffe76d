// What a trajectory puts into the row of a set, read for it or loaded already.
#include "runvalues.h"

#include <cmath>

#include "measure.h"
#include "shortestnumber.h"
#include "trajectorycheck.h"
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
} // namespace

RunFaults lineFaults(const std::string& path) {
    RunFaults faults;
    for (const Finding& loss : lossesIn(path)) {
        if (faults.count == 0)
            faults.first = "line " + std::to_string(loss.place.line) + ": " + loss.text;
        faults.count += loss.count;
    }
    return faults;
}

void putFaults(RunFaults faults, std::span<RunValue> values) {
    values[0] = faults.count;
    if (faults.count > 0)
        values[1] = std::move(faults.first);
}

void putEngagement(
    const TrajectoryFileHeader& header, const MeasuredEngagement& measured, std::span<RunValue> values,
    RunRadiation radiation) {
    const EngagementResults results = resultsOf(measured);
    auto value = values.begin() + 2; // after the faults
    *value++ = static_cast<std::int64_t>(measured.samples().size());
    *value++ = static_cast<std::int64_t>(measured.tracks().size());
    *value++ = numberValue(measured.samples().front().time);
    *value++ = numberValue(measured.samples().back().time);
    for (const TrajectoryHeaderField& field : kTrajectoryHeaderFields)
        *value++ = std::visit(HeaderValue{header}, field.member);
    for (const Measure& measure : allMeasures())
        if (isRunMeasure(measure, radiation))
            *value++ = numberValue(writtenOf(results, measure));
}
} // namespace sorvane
