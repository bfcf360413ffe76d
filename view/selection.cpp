// What the engagements' sub-menus say about the view.
#include "selection.h"

#include <algorithm>

#include <QAction>
#include <QMenu>

#include "etxyz.h"
#include "projection.h"

namespace {
QList<QAction*> actionsOf(const etxyz& engagement) {
    return engagement.menu == nullptr ? QList<QAction*>{} : engagement.menu->actions();
}
} // namespace

etxyz* selectedEngagement(const QList<etxyz*>& engagements) {
    const auto selected = std::find_if(engagements.crbegin(), engagements.crend(), [](const etxyz* engagement) {
        const QList<QAction*> actions = actionsOf(*engagement);
        return std::any_of(actions.cbegin(), actions.cend(), [](const QAction* action) {
            return action->isCheckable() && action->isChecked();
        });
    });
    return selected == engagements.crend() ? nullptr : *selected;
}

bool isEngagementHidden(const etxyz& engagement) {
    const QList<QAction*> actions = actionsOf(engagement);
    return !actions.isEmpty() && actions.first()->text() == QLatin1String("Enable");
}

double fieldOfViewDegrees(const QList<etxyz*>& engagements) {
    double fieldOfView = kDefaultFieldOfViewDegrees;
    for (const etxyz* engagement : engagements)
        for (const QAction* action : actionsOf(*engagement))
            if (action->isChecked() && action->text() == QLatin1String("View Gyro"))
                fieldOfView = double{engagement->fieldOfView};
    return fieldOfView;
}
