// How the menu of the engagements looks: which one is followed, which are hidden, and all within reach.
#include "engagementmenu.h"

#include <QAction>
#include <QMenu>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>

#include "engagementlist.h"
#include "etxyz.h"

namespace sorvane {
namespace {
bool isHidden(const QMenu& menu, const QPoint& place) {
    const QAction* const action = menu.actionAt(place);
    const QMenu* const subMenu = action == nullptr ? nullptr : action->menu();
    return subMenu != nullptr && !subMenu->isEmpty() && subMenu->actions().first()->text() == QLatin1String("Enable");
}

class EngagementMenuStyle : public QProxyStyle {
public:
    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* result) const override {
        if (hint == SH_Menu_Scrollable)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override {
        const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const auto* const menu = qobject_cast<const QMenu*>(widget);
        if (item == nullptr || menu == nullptr || !isHidden(*menu, item->rect.center()))
            return QProxyStyle::drawControl(element, option, painter, widget);
        QStyleOptionMenuItem grey = *item;
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
            grey.palette.setColor(role, grey.palette.color(QPalette::Disabled, role));
        QProxyStyle::drawControl(element, &grey, painter, widget);
    }
};
} // namespace

void styleEngagementMenu(QMenu& menu) {
    auto* const style = new EngagementMenuStyle;
    style->setParent(&menu);
    menu.setStyle(style);
}

void markFollowed(const EngagementList& engagements) {
    const LoadedEngagement* const followed = engagements.selected();
    for (const LoadedEngagement& engagement : engagements) {
        QAction* const entry = engagement.data().menu->menuAction();
        const bool isFollowed = &engagement == followed;
        QFont font = entry->font();
        if (font.bold() == isFollowed)
            continue; // setting it would lay the whole menu out again
        font.setBold(isFollowed);
        entry->setFont(font);
    }
}
} // namespace sorvane
