// How the menu of the engagements looks: which one is followed, which are hidden, and all within reach.
#pragma once

class QMenu;

namespace sorvane {
class EngagementList;

// Gives the menu a style in which the sub-menus of hidden engagements are grey and a menu too long for the screen
// scrolls, instead of spreading over columns that end beyond its edge.
void styleEngagementMenu(QMenu& menu);

// Makes the sub-menu of the engagement that is followed bold, and no other one.
void markFollowed(const EngagementList& engagements);
} // namespace sorvane
