// What is odd about a trajectory's samples as a sequence: times that repeat or go back, angles that jump, an end that
// playback does not reach.
#pragma once

#include <cstdint>
#include <vector>

#include "finding.h"
#include "keyframe.h"

namespace sorvane {
class SampleCheck {
public:
    // In file order; `line` is the record's first one.
    void add(const keyframe& sample, std::int64_t line);

    // Call once, after the last sample. With `areAll` false, samples were left out, and nothing is said of their range.
    void report(FindingList& findings, bool areAll);

    bool isEmpty() const { return samples_.empty(); }

private:
    static constexpr std::size_t kAngles = 9; // target, threat, gyro

    struct Sample {
        double time;
        std::int64_t line;
        float angles[kAngles];
    };

    void reportRepeatedTimes(FindingList& findings);
    void reportAngleJumps(FindingList& findings) const;
    void reportRange(FindingList& findings) const;

    std::vector<Sample> samples_;
    bool isAscending_ = true;
};
} // namespace sorvane
