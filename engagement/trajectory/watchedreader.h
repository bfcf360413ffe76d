// Reads a trajectory exactly as the viewer does and tells a watcher what the viewer passes over in silence.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "trajectoryreader.h"
#include "watchedlines.h"

namespace sorvane {
struct WatchedHeader {
    const TrajectoryFileHeader& header;
    std::array<std::int64_t, 12> lines{}; // the numbers of the twelve lines; that of the last line for those that lack
    int linesRead = 0;                    // of the twelve
    std::span<const LineFaults> faults;
};

struct WatchedRecord {
    const Sample& sample;
    std::span<const Flare> flares;
    std::int64_t line = 0;    // of its first line
    qsizetype headWords = 0;  // on that line
    bool isTruncated = false; // the data ended within it
    std::span<const LineFaults> faults;
};

class TrajectoryWatcher {
public:
    TrajectoryWatcher() = default;
    virtual ~TrajectoryWatcher() = default;
    TrajectoryWatcher(const TrajectoryWatcher&) = delete;
    TrajectoryWatcher& operator=(const TrajectoryWatcher&) = delete;

    virtual void header(const WatchedHeader& header) = 0;
    virtual void record(const WatchedRecord& record) = 0;
    // A blank line ended the records, and so many lines that are neither blank nor comments follow it.
    virtual void blankLine(std::int64_t line, std::int64_t linesAfter) = 0;
    // A line of kMaximumLineBytes or more: its rest is not read.
    virtual void cutLine(std::int64_t line) = 0;
};

// Reads on from where the device stands, which is a trajectory's beginning, to the end of the data. What is told is
// valid only while the watcher is told.
void readWatched(QIODevice* device, bool isProcess, TrajectoryWatcher& watcher);
} // namespace sorvane
