// Reads a trajectory into a row of a set.
#include "runreading.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <new>
#include <sys/stat.h>

#include <QFile>

#include "measure.h"
#include "openingproblem.h"
#include "shortestnumber.h"
#include "trajectorycheck.h"
#include "trajectoryheaderfields.h"
#include "trajectoryidentity.h"
#include "trajectoryinput.h"
#include "withoutnoise.h"

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

// What its lines lack. The files that a trajectory names may be elsewhere.
Faults faultsOf(const std::string& path) {
    FindingList list(path, false);
    checkTrajectory(openTrajectory(QFile::decodeName(path.c_str())), path, list);
    Faults faults;
    for (const Finding& finding : list.take()) {
        if (finding.severity != Severity::Error || finding.kind == kMissingFiles)
            continue;
        if (faults.count == 0)
            faults.first = "line " + std::to_string(finding.place.line) + ": " + finding.text;
        faults.count += finding.count;
    }
    return faults;
}

std::optional<Problem> problemOfContents(const TrajectoryInput& input, const std::string& path) {
    if (input.device == nullptr)
        return problemOfOpening(path);
    if (std::optional<Problem> problem = problemOfInput(input, path))
        return problem;
    constexpr qint64 kHeadBytes = qint64{1} << 16;
    if (isNamedLikeTrajectory(std::filesystem::path(path).filename().string()))
        return std::nullopt;
    const QByteArray head = input.device->peek(kHeadBytes);
    if (looksLikeTrajectory(TextHead(std::string_view(head.data(), static_cast<std::size_t>(head.size())))))
        return std::nullopt;
    return Problem("does not look like a trajectory");
}

// Puts all but the path's fields into `values`.
Faults read(const std::string& path, LengthUnit unit, std::vector<RunValue>& values) {
    const TrajectoryInput input = openTrajectory(QFile::decodeName(path.c_str()));
    if (const auto problem = problemOfContents(input, path))
        return wholeFileFault(problem->text);
    const TrajectoryFileHeader header = readTrajectoryHeader(input.device.get(), input.isProcess);
    SampleSeries series;
    const RecordsEnd end = readEachRecord(
        input.device.get(), input.isProcess,
        [&](const Sample& sample, const std::vector<Flare>& flares) { series.add(sample, flares); });
    if (!input.cameWhole())
        return wholeFileFault("its compressed data are damaged or cut short");
    if (series.isEmpty())
        return wholeFileFault("holds no samples");
    series.putInOrder();
    const MeasuredEngagement measured(series, header.fieldOfView, unit);
    const EngagementResults results = resultsOf(measured);
    auto value = values.begin() + 2; // after the faults
    *value++ = static_cast<std::int64_t>(series.samples().size());
    *value++ = static_cast<std::int64_t>(measured.tracks().size());
    *value++ = numberValue(series.samples().front().time);
    *value++ = numberValue(series.samples().back().time);
    for (const TrajectoryHeaderField& field : kTrajectoryHeaderFields)
        *value++ = std::visit(HeaderValue{header}, field.member);
    for (const Measure& measure : allMeasures())
        if (measure.isOfEngagement())
            *value++ = numberValue(writtenValue(valueOf(results, measure)));
    return header.isWhole && end.isWhole && end.isAllConverted ? Faults() : faultsOf(path);
}
} // namespace

RunStamp runStamp(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    constexpr std::int64_t kNanoseconds = 1000000000;
    return {status.st_size, status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

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
