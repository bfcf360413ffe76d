// The engagements that the viewer has loaded: their one owner.
#include "engagementlist.h"

#include <algorithm>
#include <utility>

#include "etxyz.h"
#include "selection.h"

namespace sorvane {
EngagementList::EngagementList(End end, QObject* parent) : QObject(parent), end_(std::move(end)) {}

EngagementList::~EngagementList() {
    clear();
}

const LoadedEngagement* EngagementList::find(EngagementId id) const {
    const auto found = std::ranges::find(engagements_, id, &LoadedEngagement::id);
    return found == engagements_.end() ? nullptr : &*found;
}

const LoadedEngagement* EngagementList::selected() const {
    const auto found = std::find_if(engagements_.rbegin(), engagements_.rend(), [](const LoadedEngagement& engagement) {
        return isEngagementSelected(engagement.data());
    });
    return found == engagements_.rend() ? nullptr : &*found;
}

void EngagementList::add(const QString& path, EngagementReading reading) {
    const LoadedEngagement& engagement = engagements_.emplace_back(path, std::move(reading));
    emit added(engagement);
    emit fileRead(engagement);
    hasNew_ = true;
    settleIfAlone();
}

void EngagementList::replace(EngagementId id, EngagementReading reading) {
    const auto engagement = place(id);
    if (engagement == engagements_.end())
        return;
    std::unique_ptr<etxyz> old;
    if (reading.data == nullptr) {
        engagement->reading_.stamp = reading.stamp;
    } else {
        reading.data->menu = std::exchange(engagement->data().menu, nullptr);
        old = engagement->take(std::move(reading));
        emit replaced(*engagement);
    }
    emit fileRead(*engagement);
    settleIfAlone();
    if (old != nullptr)
        end_(std::move(old));
}

void EngagementList::remove(EngagementId id) {
    const auto engagement = place(id);
    if (engagement == engagements_.end())
        return;
    emit aboutToBeRemoved(*engagement);
    std::unique_ptr<etxyz> data = std::move(engagement->reading_.data);
    engagements_.erase(engagement);
    emit removed(id);
    end_(std::move(data));
}

void EngagementList::clear() {
    while (!engagements_.empty())
        remove(engagements_.back().id());
}

void EngagementList::settle() {
    if (std::exchange(isUnsettled_, false))
        emit settled(std::exchange(hasNew_, false));
}

void EngagementList::settleIfAlone() {
    isUnsettled_ = true;
    if (series_ == 0)
        settle();
}

std::list<LoadedEngagement>::iterator EngagementList::place(EngagementId id) {
    return std::ranges::find(engagements_, id, &LoadedEngagement::id);
}
} // namespace sorvane
