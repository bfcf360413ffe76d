// What the engagements' sub-menus say about the view.
#include "selection.h"

#include <algorithm>

#include <QAction>
#include <QMenu>

#include "etxyz.h"
#include "projection.h"

namespace sorvane {
namespace {
QList<QAction*> actionsOf(const etxyz& engagement) {
    return engagement.menu == nullptr ? QList<QAction*>{} : engagement.menu->actions();
}
} // namespace

bool isEngagementSelected(const etxyz& engagement) {
    return std::ranges::any_of(
        actionsOf(engagement), [](const QAction* action) { return action->isCheckable() && action->isChecked(); });
}

const etxyz* selectedEngagement(std::span<const SceneEngagement> engagements) {
    const auto selected = std::find_if(engagements.rbegin(), engagements.rend(), [](const SceneEngagement& shown) {
        return isEngagementSelected(*shown.engagement);
    });
    return selected == engagements.rend() ? nullptr : selected->engagement;
}

bool isEngagementHidden(const etxyz& engagement) {
    const QList<QAction*> actions = actionsOf(engagement);
    return !actions.isEmpty() && actions.first()->text() == QLatin1String("Enable");
}

QAction* viewAction(const etxyz& engagement, ViewMode mode) {
    const QLatin1String text(nameOf(mode).menuText);
    for (QAction* const action : actionsOf(engagement))
        if (action->text() == text)
            return action;
    return nullptr;
}

double fieldOfViewDegrees(std::span<const SceneEngagement> engagements) {
    double fieldOfView = kDefaultFieldOfViewDegrees;
    for (const SceneEngagement& shown : engagements) {
        const QAction* const gyroView = viewAction(*shown.engagement, ViewGyro);
        if (gyroView != nullptr && gyroView->isChecked())
            fieldOfView = double{shown.engagement->fieldOfView};
    }
    return fieldOfView;
}
} // namespace sorvane
