// What the engagements' sub-menus say about the view: which engagement it follows, which are hidden.
#pragma once

#include <span>

#include "scene.h"

class QAction;
class etxyz;

namespace sorvane {
// Whether one of the engagement's actions is checked.
bool isEngagementSelected(const etxyz& engagement);

// The engagement that the camera follows: the last one that is selected, or null.
const etxyz* selectedEngagement(std::span<const SceneEngagement> engagements);

// Whether the engagement's first action reads "Enable": the text is the state.
bool isEngagementHidden(const etxyz& engagement);

// The action that chooses a view of the engagement, or null.
QAction* viewAction(const etxyz& engagement, ViewMode mode);

// The full field of view of the projection in degrees: the seeker's of the last engagement whose gyro view is checked,
// else the default one.
double fieldOfViewDegrees(std::span<const SceneEngagement> engagements);
} // namespace sorvane
