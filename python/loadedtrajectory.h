// A trajectory in memory: what the module's arrays refer to, and its measures.
#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "measure.h"
#include "radiometer.h"
#include "trajectoryfile.h"

namespace sorvane {
// May be asked from several threads at once. Whoever holds Python's lock lets go of it before asking for what is worked
// out: another thread may be at it.
class LoadedTrajectory {
public:
    LoadedTrajectory(std::string path, TrajectorySamples read, LengthUnit unit, RadiometryOptions radiometry)
        : path_(std::move(path)), read_(std::move(read)), unit_(unit), radiometry_(std::move(radiometry)) {}
    LoadedTrajectory(const LoadedTrajectory&) = delete;
    LoadedTrajectory& operator=(const LoadedTrajectory&) = delete;

    const std::string& path() const { return path_; }
    const TrajectoryFileHeader& header() const { return read_.header; }
    const SampleSeries& series() const { return read_.series; }
    LengthUnit unit() const { return unit_; }

    // Worked out when first asked for. With the target's radiation, which takes long, where the measure needs it.
    const MeasuredEngagement& measured() const;
    const MeasuredEngagement& measuredFor(const Measure& measure) const;
    const EngagementResults& results() const;
    const EngagementResults& resultsFor(const Measure& measure) const;
    // Why measures that need it are undefined; nothing when they aren't, and before one is asked for.
    const std::optional<Problem>& lackOfRadiation() const { return lack_; }

private:
    std::string path_;
    TrajectorySamples read_;
    LengthUnit unit_;
    mutable std::once_flag isMeasured_;
    mutable std::optional<MeasuredEngagement> measured_;
    mutable std::once_flag hasResults_;
    mutable EngagementResults results_;
    RadiometryOptions radiometry_;
    mutable std::once_flag isRadiating_;
    mutable std::optional<MeasuredEngagement> radiating_;
    mutable std::optional<Problem> lack_;
    mutable std::once_flag hasRadiatingResults_;
    mutable EngagementResults radiatingResults_;
};

// Reads the trajectory at `path`. Throws FileError when it can't be opened, is none or holds no samples; if `isStrict`,
// too, when a word of it is missing or no number, with its place. Otherwise such a word counts as the viewer has it.
std::shared_ptr<LoadedTrajectory>
loadTrajectory(const std::string& path, LengthUnit unit, bool isStrict, const RadiometryOptions& radiometry);
} // namespace sorvane
