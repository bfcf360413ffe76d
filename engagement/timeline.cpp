// One loaded engagement: its state at any time, from its samples.
#include "etxyz.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {
void blend(float (&floats)[3], const float (&later)[3], double u) {
    for (int i = 0; i < 3; ++i)
        floats[i] = static_cast<float>(floats[i] * (1.0 - u) + later[i] * u);
}

// Finds the last flare of an id in a list.
class FlareFinder {
public:
    // A list that is searched many times gets a sorted index.
    FlareFinder(const QList<flareKeyframe>& flares, qsizetype searches) : flares_(flares) {
        if (flares.size() <= kFewFlares || searches <= kFewFlares)
            return;
        index_.reserve(static_cast<std::size_t>(flares.size()));
        for (qsizetype i = 0; i < flares.size(); ++i)
            index_.emplace_back(flares[i].id, i);
        std::ranges::sort(index_);
    }

    // Null when there is none.
    const flareKeyframe* lastOf(int id) const {
        if (index_.empty()) {
            const auto found =
                std::find_if(flares_.crbegin(), flares_.crend(), [id](const flareKeyframe& f) { return f.id == id; });
            return found == flares_.crend() ? nullptr : &*found;
        }
        const auto after = std::ranges::upper_bound(index_, id, {}, &Entry::first);
        return after == index_.begin() || std::prev(after)->first != id ? nullptr : &flares_[std::prev(after)->second];
    }

private:
    using Entry = std::pair<int, qsizetype>; // id and place in the list
    static constexpr qsizetype kFewFlares = 32;

    const QList<flareKeyframe>& flares_;
    std::vector<Entry> index_;
};

void blendFlares(QList<flareKeyframe>& flares, const QList<flareKeyframe>& later, double u) {
    if (flares.isEmpty() || later.isEmpty())
        return;
    const FlareFinder finder(later, flares.size());
    for (flareKeyframe& flare : flares) {
        const flareKeyframe* const match = finder.lastOf(flare.id);
        if (match == nullptr)
            continue;
        blend(flare.pos, match->pos, u);
        blend(flare.values, match->values, u);
        blend(flare.intensity, match->intensity, u);
    }
}
} // namespace

keyframe etxyz::NearestKeyframe(double t, RoundingType rounding) const {
    const auto [lower, upper] = sampleIndex_.around(keyframes, t);
    if (rounding == RoundDown)
        return *lower;
    if (rounding == RoundNearest && upper.key() - t > t - lower.key())
        return *lower;
    return *upper;
}

keyframe etxyz::InterpolatedFrame(double t) const {
    const auto [earlier, later] = sampleIndex_.around(keyframes, t);
    keyframe frame = *earlier;
    if (earlier->time == later->time)
        return frame;
    const double u = (t - earlier->time) / (later->time - earlier->time);
    frame.time = t;
    blend(frame.targetPos, later->targetPos, u);
    blend(frame.targetAtt, later->targetAtt, u);
    blend(frame.threatPos, later->threatPos, u);
    blend(frame.threatAtt, later->threatAtt, u);
    blend(frame.gyro, later->gyro, u);
    blendFlares(frame.flares, later->flares, u);
    return frame;
}

std::size_t etxyz::sampleCountAt(double t) const {
    return sampleIndex_.countNotAfter(keyframes, t);
}

const keyframe& etxyz::keyframeAtZero() {
    if (const auto found = std::as_const(keyframes).find(0.0); found != keyframes.cend())
        return *found;
    sampleIndex_.clear();
    return keyframes[0.0];
}
