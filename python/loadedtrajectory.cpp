// A trajectory in memory: what the module's arrays refer to, and its measures.
#include "loadedtrajectory.h"

#include "fileerror.h"
#include "trajectorycheck.h"

namespace sorvane {
namespace {
// What keeps the data from being what the file says, the first of it.
FileError firstLoss(const std::string& path) {
    const std::vector<Finding> losses = lossesIn(path);
    if (losses.empty())
        return {path + ": could not be read as a whole", path};
    const Finding& first = losses.front();
    const auto [line, column] = first.place;
    return {path + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + first.text, path, line, column};
}
} // namespace

const MeasuredEngagement& LoadedTrajectory::measured() const {
    std::call_once(isMeasured_, [this] { measured_.emplace(read_.series, read_.header.fieldOfView, unit_); });
    return *measured_;
}

const EngagementResults& LoadedTrajectory::results() const {
    const MeasuredEngagement& engagement = measured();
    std::call_once(hasResults_, [&] { results_ = resultsOf(engagement); });
    return results_;
}

std::shared_ptr<LoadedTrajectory> loadTrajectory(const std::string& path, LengthUnit unit, bool isStrict) {
    Outcome<TrajectorySamples> read = readTrajectorySamples(path);
    if (!read)
        throw FileError(read.problem().text, path);
    if (isStrict && !read->isWhollyRead)
        throw firstLoss(path);
    return std::make_shared<LoadedTrajectory>(path, *std::move(read), unit);
}
} // namespace sorvane
