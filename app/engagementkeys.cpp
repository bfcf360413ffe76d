// Keys that go through what is loaded: follow another engagement, take one out, hide all others.
#include "engagementkeys.h"

#include <algorithm>
#include <iterator>

#include <QAction>
#include <QCheckBox>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>

#include "aircraftwidget.h"
#include "currentengagement.h"
#include "engagementlist.h"
#include "etxyz.h"
#include "selection.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
void show(const LoadedEngagement& engagement, bool isShown) {
    if (isEngagementHidden(engagement.data()) == isShown)
        engagement.data().menu->actions().first()->trigger();
}
} // namespace

void EngagementKeys::follow(StepDirection direction) {
    const EngagementList& all = parts_.engagements;
    if (all.isEmpty())
        return;
    const LoadedEngagement* const current = parts_.current.get();
    const LoadedEngagement* const next = current == nullptr ? &*all.begin() : neighbour(*current, direction);
    if (next == nullptr) {
        const bool isForward = direction == StepDirection::Forward;
        return parts_.notice.notify(QStringLiteral("No engagement %1 %2")
                                        .arg(isForward ? QStringLiteral("after") : QStringLiteral("before"))
                                        .arg(current->name()));
    }
    follow(*next);
}

void EngagementKeys::follow(const LoadedEngagement& engagement) {
    choose(engagement);
    const EngagementList& all = parts_.engagements;
    const auto place = std::ranges::find(all, engagement.id(), &LoadedEngagement::id);
    parts_.notice.notify(QStringLiteral("%1 (%2 of %3)")
                             .arg(engagement.name())
                             .arg(std::distance(all.begin(), place) + 1)
                             .arg(all.size()));
}

void EngagementKeys::remove() {
    const LoadedEngagement* const leaving = parts_.current.get();
    if (leaving == nullptr || !isAgreed(*leaving))
        return;
    const QString name = leaving->name();
    const LoadedEngagement* next = neighbour(*leaving, StepDirection::Forward);
    if (next == nullptr)
        next = neighbour(*leaving, StepDirection::Back);
    parts_.engagements.remove(leaving->id());
    if (next != nullptr)
        choose(*next);
    parts_.notice.notify(QStringLiteral("%1 is taken out").arg(name));
}

void EngagementKeys::toggleOthers() {
    const LoadedEngagement* const current = parts_.current.get();
    if (current == nullptr)
        return;
    areOthersHidden_ = !areOthersHidden_;
    showOnly(areOthersHidden_ ? current : nullptr);
    parts_.notice.notify(
        areOthersHidden_ ? QStringLiteral("All but %1 are hidden").arg(current->name())
                         : QStringLiteral("No engagement is hidden"));
}

const LoadedEngagement* EngagementKeys::neighbour(const LoadedEngagement& engagement, StepDirection direction) const {
    const EngagementList& all = parts_.engagements;
    const auto place = std::ranges::find(all, engagement.id(), &LoadedEngagement::id);
    if (direction == StepDirection::Back)
        return place == all.begin() ? nullptr : &*std::prev(place);
    return std::next(place) == all.end() ? nullptr : &*std::next(place);
}

void EngagementKeys::choose(const LoadedEngagement& engagement) const {
    QAction* const view = viewAction(engagement.data(), parts_.view.viewMode());
    if (!view->isChecked()) // else it would be unchecked
        view->trigger();
    if (areOthersHidden_)
        showOnly(&engagement);
    else
        show(engagement, true);
}

void EngagementKeys::showOnly(const LoadedEngagement* only) const {
    for (const LoadedEngagement& engagement : parts_.engagements)
        show(engagement, only == nullptr || engagement.id() == only->id());
}

bool EngagementKeys::isAgreed(const LoadedEngagement& engagement) {
    if (!isAsking_)
        return true;
    QMessageBox question(
        QMessageBox::Question, QStringLiteral("Take out"),
        QStringLiteral("Take %1 out of the viewer? The file stays as it is.").arg(engagement.name()),
        QMessageBox::Yes | QMessageBox::No, &parts_.window);
    auto* const isForAll = new QCheckBox(QStringLiteral("Don't ask again"));
    question.setCheckBox(isForAll);
    question.setDefaultButton(QMessageBox::Yes);
    const bool isAgreedTo = question.exec() == QMessageBox::Yes;
    isAsking_ = !isAgreedTo || !isForAll->isChecked();
    return isAgreedTo;
}
} // namespace sorvane
