// Reads all loaded files again.
#pragma once

#include <QStringList>

class AircraftWidget;

namespace sorvane {
class EngagementList;

// What F5 could not bring up to date.
struct ReloadResult {
    QStringList unreadable; // paths of files that now yield no keyframes: their engagements are as they were
    QStringList kept;       // a text for each body or terrain that stays as it was or is lost: which files, and why
};

// Reads each engagement's file again and puts what it gives in the old data's place. Bodies and terrain whose files are
// the same go on with the new data; of the others every file is read anew, and one that can't be used any more leaves
// the old one in place. Time, camera and view stay.
ReloadResult reloadAll(EngagementList& engagements, AircraftWidget& view);
} // namespace sorvane
