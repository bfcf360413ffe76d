// What the engagements' sub-menus say about the view: which engagement it follows, which are hidden.
#pragma once

#include <QList>

class etxyz;

// The engagement that the camera follows: the last one in the list with a checked action in its sub-menu, or null.
etxyz* selectedEngagement(const QList<etxyz*>& engagements);

// Whether the engagement's first action reads "Enable": the text is the state.
bool isEngagementHidden(const etxyz& engagement);

// The full field of view of the projection in degrees: the seeker's of the last engagement whose "View Gyro" is
// checked, else the default one.
double fieldOfViewDegrees(const QList<etxyz*>& engagements);
