// What is odd about a trajectory's samples as a sequence.
#include "samplecheck.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <QLocale>
#include <QString>

#include "clocknumbers.h"

namespace sorvane {
namespace {
constexpr const char* kTimes = "faults of times";
constexpr double kHalfTurn = 180.0;   // degrees
constexpr double kNoticedLoss = 0.01; // of the trajectory's units
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

void SampleCheck::add(const Sample& sample, std::span<const Flare> flares, std::int64_t line) {
    if (!samples_.empty() && !(sample.time > samples_.back().time))
        isAscending_ = false;
    Row& added = samples_.emplace_back();
    added.time = sample.time;
    added.line = line;
    double* end = std::ranges::copy(sample.targetAttitude, added.angles).out;
    end = std::ranges::copy(sample.threatAttitude, end).out;
    std::ranges::copy(sample.gyro, end);
    lookForLoss(sample.targetPosition, line);
    lookForLoss(sample.threatPosition, line);
    for (const Flare& flare : flares)
        lookForLoss(flare.position, line);
}

void SampleCheck::lookForLoss(const Triple& position, std::int64_t line) {
    for (const double coordinate : position) {
        const double loss = std::abs(coordinate - double{static_cast<float>(coordinate)});
        if (loss > kNoticedLoss && greatestLoss_ <= kNoticedLoss)
            firstLossLine_ = line;
        greatestLoss_ = std::max(greatestLoss_, loss);
    }
}

void SampleCheck::report(FindingList& findings, bool areAll) {
    if (samples_.empty())
        return;
    if (!isAscending_)
        reportRepeatedTimes(findings);
    reportAngleJumps(findings);
    reportLoss(findings);
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
    std::ranges::stable_sort(samples_, {}, &Row::time);
    std::vector<Row> kept;
    for (const Row& sample : samples_) {
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
        const Row& before = samples_[i - 1];
        const Row& after = samples_[i];
        double greatest = 0.0;
        for (std::size_t a = 0; a < kAngles; ++a)
            greatest = std::max(greatest, std::abs(after.angles[a] - before.angles[a]));
        if (greatest <= kHalfTurn) [[likely]]
            continue;
        for (std::size_t a = 0; a < kAngles; ++a)
            if (std::abs(after.angles[a] - before.angles[a]) > kHalfTurn)
                findings.warning(
                    {after.line}, "jumping angles",
                    std::string(kAngleNames[a]) + " jumps from the " + exactly(before.angles[a]) + " of " +
                        lineText(before.line) + " to " + exactly(after.angles[a]) +
                        ": angles are blended as plain numbers, and this one turns the long way round");
    }
}

void SampleCheck::reportLoss(FindingList& findings) const {
    if (greatestLoss_ > kNoticedLoss)
        findings.warning(
            {firstLossLine_}, "inexact positions",
            std::string("from here on positions lose up to ") + QString::number(greatestLoss_, 'g', 3).toStdString() +
                " units in the viewer, which keeps about seven digits of them: sorvane convert --origin brings them "
                "near the origin");
}

void SampleCheck::reportRange(FindingList& findings) const {
    const auto firstNotBefore = [this](double time) {
        return std::ranges::lower_bound(samples_, time, {}, &Row::time);
    };
    if (const auto zero = firstNotBefore(0.0); zero == samples_.end() || zero->time != 0.0)
        findings.warning(
            {}, kTimes, "there is no sample at time 0, by which the terrain is placed: an empty one takes its place");
    if (samples_.front().time < 0.0)
        findings.warning(
            {samples_.front().line}, kTimes,
            std::string("the samples begin at ") + exactly(samples_.front().time) + " s, and playback begins at 0 s");
    if (samples_.back().time > kTimeBoxEnd) {
        const auto beyond = std::ranges::upper_bound(samples_, kTimeBoxEnd, {}, &Row::time);
        findings.warning(
            {beyond->line}, kTimes,
            std::string("from here on the samples, which end at ") + exactly(samples_.back().time) +
                " s, are beyond what playback reaches, " + exactly(kTimeBoxEnd) + " s");
    }
}
} // namespace sorvane
