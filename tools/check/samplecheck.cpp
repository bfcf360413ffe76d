// What is odd about a trajectory's samples as a sequence.
#include "samplecheck.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <QLocale>
#include <QString>

#include "clocknumbers.h"
#include "measuretext.h"

namespace sorvane {
namespace {
constexpr const char* kTimes = "faults of times";
constexpr float kHalfTurn = 180.0F; // degrees
constexpr const char* kAngleNames[] = {"target angle 1", "target angle 2", "target angle 3",
                                       "threat angle 1", "threat angle 2", "threat angle 3",
                                       "gyro angle 1",   "gyro angle 2",   "gyro angle 3"};

// All its digits, to be found in the file.
std::string exactly(double number) {
    return QString::number(number, 'g', QLocale::FloatingPointShortest).toStdString();
}

std::string lineText(std::int64_t line) {
    return std::string("line ") + std::to_string(line);
}
} // namespace

void SampleCheck::add(const keyframe& sample, std::int64_t line) {
    if (!samples_.empty() && !(sample.time > samples_.back().time))
        isAscending_ = false;
    Sample& added = samples_.emplace_back();
    added.time = sample.time;
    added.line = line;
    float* end = std::ranges::copy(sample.targetAtt, added.angles).out;
    end = std::ranges::copy(sample.threatAtt, end).out;
    std::ranges::copy(sample.gyro, end);
}

void SampleCheck::report(FindingList& findings, bool areAll) {
    if (samples_.empty())
        return;
    if (!isAscending_)
        reportRepeatedTimes(findings);
    reportAngleJumps(findings);
    if (areAll)
        reportRange(findings);
}

// Leaves the samples as the viewer has them: by time, the last one of each.
void SampleCheck::reportRepeatedTimes(FindingList& findings) {
    for (std::size_t i = 1; i < samples_.size(); ++i)
        if (samples_[i].time < samples_[i - 1].time)
            findings.warning(
                {samples_[i].line}, kTimes,
                std::string("the time ") + exactly(samples_[i].time) + " goes back behind the " +
                    exactly(samples_[i - 1].time) + " of " + lineText(samples_[i - 1].line));
    std::ranges::stable_sort(samples_, {}, &Sample::time);
    std::vector<Sample> kept;
    for (const Sample& sample : samples_) {
        if (kept.empty() || kept.back().time != sample.time) {
            kept.push_back(sample);
            continue;
        }
        findings.error(
            {sample.line}, kTimes,
            std::string("the time ") + exactly(sample.time) + " repeats that of " + lineText(kept.back().line) +
                ", whose record is lost");
        kept.back() = sample;
    }
    samples_ = std::move(kept);
}

void SampleCheck::reportAngleJumps(FindingList& findings) const {
    for (std::size_t i = 1; i < samples_.size(); ++i) {
        const Sample& before = samples_[i - 1];
        const Sample& after = samples_[i];
        float greatest = 0.0F;
        for (std::size_t a = 0; a < kAngles; ++a)
            greatest = std::max(greatest, std::abs(after.angles[a] - before.angles[a]));
        if (greatest <= kHalfTurn) [[likely]]
            continue;
        for (std::size_t a = 0; a < kAngles; ++a)
            if (std::abs(after.angles[a] - before.angles[a]) > kHalfTurn)
                findings.warning(
                    {after.line}, "jumping angles",
                    std::string(kAngleNames[a]) + " jumps from the " + exactly(double{before.angles[a]}) + " of " +
                        lineText(before.line) + " to " + exactly(double{after.angles[a]}) +
                        ": angles are blended as plain numbers, and this one turns the long way round");
    }
}

void SampleCheck::reportRange(FindingList& findings) const {
    const auto firstNotBefore = [this](double time) {
        return std::ranges::lower_bound(samples_, time, {}, &Sample::time);
    };
    if (const auto zero = firstNotBefore(0.0); zero == samples_.end() || zero->time != 0.0)
        findings.warning(
            {}, kTimes, "there is no sample at time 0, by which the terrain is placed: an empty one takes its place");
    if (samples_.front().time < 0.0)
        findings.warning(
            {samples_.front().line}, kTimes,
            std::string("the samples begin at ") + exactly(samples_.front().time) + " s, and playback begins at 0 s");
    if (samples_.back().time > kTimeBoxEnd) {
        const auto beyond = std::ranges::upper_bound(samples_, kTimeBoxEnd, {}, &Sample::time);
        findings.warning(
            {beyond->line}, kTimes,
            std::string("from here on the samples, which end at ") + exactly(samples_.back().time) +
                " s, are beyond what playback reaches, " + exactly(kTimeBoxEnd) + " s");
    }
}
} // namespace sorvane
