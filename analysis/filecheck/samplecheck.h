// What is odd about a trajectory's samples as a sequence: times that repeat or go back, angles that jump, an end that
// playback does not reach.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "finding.h"
#include "sample.h"

namespace sorvane {
class SampleCheck {
public:
    // In file order; `line` is the record's first one.
    void add(const Sample& sample, std::span<const Flare> flares, std::int64_t line);

    // Call once, after the last sample. With `areAll` false, samples were left out, and nothing is said of their range.
    void report(FindingList& findings, bool areAll);

    bool isEmpty() const { return samples_.empty(); }

private:
    static constexpr std::size_t kAngles = 9; // target, threat, gyro

    struct Row {
        double time;
        std::int64_t line;
        double angles[kAngles];
    };

    void reportRepeatedTimes(FindingList& findings);
    void reportAngleJumps(FindingList& findings) const;
    void reportRange(FindingList& findings) const;

    void lookForLoss(const Triple& position, std::int64_t line);
    void reportLoss(FindingList& findings) const;

    std::vector<Row> samples_;
    bool isAscending_ = true;
    double greatestLoss_ = 0.0; // of a coordinate in the viewer's single precision
    std::int64_t firstLossLine_ = 0;
};
} // namespace sorvane
