// The files that an engagement's bodies and terrain are made of.
#pragma once

#include "filestamp.h"

class etxyz;

namespace sorvane {
// Bodies and terrain whose stamped files are equal look alike and needn't be read again.
struct ModelFiles {
    StampedFiles target;
    StampedFiles threat;
    StampedFiles terrain; // with a description every file of its folder, else those of its stem
};

// As they are on disk now.
ModelFiles modelFilesOf(const etxyz& engagement);
} // namespace sorvane
