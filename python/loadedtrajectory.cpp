// A trajectory in memory: what the module's arrays refer to, and its measures.
#include "loadedtrajectory.h"

#include "fileerror.h"
#include "loadersmutex.h"
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

const MeasuredEngagement& LoadedTrajectory::measuredFor(const Measure& measure) const {
    const MeasuredEngagement& plain = measured();
    if (!measure.needsRadiometry())
        return plain;
    std::call_once(isRadiating_, [&] {
        radiating_.emplace(plain);
        const std::lock_guard alone(loadersMutex());
        lack_ = Radiometer(radiometry_, BandChoice::All).measure(header(), *radiating_);
    });
    return *radiating_;
}

const EngagementResults& LoadedTrajectory::resultsFor(const Measure& measure) const {
    if (!measure.needsRadiometry())
        return results();
    const MeasuredEngagement& engagement = measuredFor(measure);
    std::call_once(hasRadiatingResults_, [&] { radiatingResults_ = resultsOf(engagement); });
    return radiatingResults_;
}

std::shared_ptr<LoadedTrajectory>
loadTrajectory(const std::string& path, LengthUnit unit, bool isStrict, const RadiometryOptions& radiometry) {
    Outcome<TrajectorySamples> read = readTrajectorySamples(path);
    if (!read)
        throw FileError(read.problem().text, path);
    if (isStrict && !read->isWhollyRead)
        throw firstLoss(path);
    return std::make_shared<LoadedTrajectory>(path, *std::move(read), unit, radiometry);
}
} // namespace sorvane
