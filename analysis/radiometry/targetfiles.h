// The files from which the radiation of a trajectory's target is worked out.
#pragma once

#include <string>
#include <vector>

#include "signaturebody.h"

namespace sorvane {
struct TrajectoryFileHeader;

// Of one band.
struct TargetFiles {
    char band = 0; // the digit in their names
    SignatureFiles body{};
    std::string atmosphere{};
};

enum class BandChoice { Named, All };

// The files that the header names, first, and with BandChoice::All those of the bands 1, 4 and 6 beside them:
// reflectance, radiance and atmosphere whose names differ in the band alone (b0001, band1 or the word nir; 4 is midir,
// 6 vis), where all three exist. Empty when one of those named doesn't exist; the stock target that is drawn then isn't
// measured.
std::vector<TargetFiles>
targetFilesOf(const TrajectoryFileHeader& header, BandChoice choice, const std::string& rotors = {});
} // namespace sorvane
