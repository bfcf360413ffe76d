// Cuts a piece out of a trajectory.
#include "timecut.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "withoutnoise.h"

namespace sorvane {
namespace {
using Position = std::vector<ExactSample>::const_iterator;

// The first sample that is not before `time`.
Position notBefore(const std::vector<ExactSample>& samples, double time) {
    return std::ranges::lower_bound(samples, time, {}, &ExactSample::time);
}

// Whether `time` lies between the sample at `next` and the one before it.
bool isBetween(const std::vector<ExactSample>& samples, Position next, double time) {
    return next != samples.begin() && next != samples.end() && next->time != time;
}
} // namespace

std::vector<ExactSample>
timeCut(const std::vector<ExactSample>& samples, std::optional<double> from, std::optional<double> to) {
    const Position first = from ? notBefore(samples, *from) : samples.begin();
    Position last = to ? notBefore(samples, *to) : samples.end();
    const bool endsBetween = to && isBetween(samples, last, *to);
    ExactSample end;
    if (endsBetween)
        end = blended(*std::prev(last), *last, *to);
    else if (last != samples.end() && last->time == *to)
        ++last;

    std::vector<ExactSample> piece;
    if (from && isBetween(samples, first, *from))
        piece.push_back(blended(*std::prev(first), *first, *from));
    if (first < last)
        piece.insert(piece.end(), first, last);
    if (endsBetween && (piece.empty() || piece.back().time < *to))
        piece.push_back(std::move(end));
    if (!from || piece.empty())
        return piece;
    const double start = std::max(*from, piece.front().time);
    for (ExactSample& sample : piece)
        sample.time = withoutNoise(sample.time - start, std::max(std::abs(sample.time), std::abs(start)));
    return piece;
}
} // namespace sorvane
