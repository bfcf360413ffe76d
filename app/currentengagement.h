// The engagement that keys and read-out go by.
#pragma once

#include <QList>

class QMenu;
class etxyz;

// The selected engagement, or the one selected last when none is. Sub-menus stand for engagements, because they outlive
// a reload.
class CurrentEngagement {
public:
    explicit CurrentEngagement(const QList<etxyz*>& engagements) : engagements_(engagements) {}

    // A view of the engagement with this sub-menu has been chosen, or unchecked.
    void remember(const QMenu* menu) { lastMenu_ = menu; }

    // Null while no engagement was ever selected.
    etxyz* get() const;

private:
    const QList<etxyz*>& engagements_;
    const QMenu* lastMenu_ = nullptr;
};
