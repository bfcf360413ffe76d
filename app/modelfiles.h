// The files that an engagement's bodies and terrain are made of.
#pragma once

#include <QStringList>

#include "filestamp.h"

class etxyz;

namespace sorvane {
// Bodies and terrain whose stamped files are equal look alike and needn't be read again.
struct ModelFiles {
    StampedFiles target;
    StampedFiles threat;
    StampedFiles terrain; // with a description every file of its folder, else those of its stem
};

// The paths of those that are not in both, or are no longer the same.
QStringList changedFiles(const StampedFiles& before, const StampedFiles& now);

// As they are on disk now.
ModelFiles modelFilesOf(const etxyz& engagement);
} // namespace sorvane
