// Reads all loaded files again.
#pragma once

#include <QStringList>

class AircraftWidget;

namespace sorvane {
class EngagementList;

// Reads each engagement's file again and puts what it gives in the old data's place. Bodies and terrain whose files are
// the same go on with the new data. A file that now yields no keyframes leaves its engagement as it is; the paths of
// those are returned. Time, camera and view stay.
QStringList reloadAll(EngagementList& engagements, AircraftWidget& view);
} // namespace sorvane
