// The data tree that the engagements use: the folder data/, which serves as data root.
#pragma once

#include <vector>

#include "demonstrationfile.h"

namespace sorvane {
// The stock files' names below the data root, which the viewer also falls back to.
inline constexpr const char* kTerrainTopography = "ter0010/ter0010.top";
inline constexpr const char* kTerrainRadiance = "ter0010/ter0010_w0001_t1500_b0001.rad";
inline constexpr const char* kTargetGeometry = "tgt4004/tgt4004.vnl";
inline constexpr const char* kTargetReflectance = "tgt4004/tgt4004_b0001_mat0004.brdf";
inline constexpr const char* kTargetSignature = "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.rad";
inline constexpr const char* kAtmosphere = "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm";

// The form factors beside the geometry: the viewer finds them by their names.
inline constexpr const char* kTargetFormFactors = "tgt4004/tgt4004.sff-txt";
inline constexpr const char* kMissileFormFactors = "tgt0450/tgt0450.sff-txt";

// A helicopter, whose rotors stand still in the viewer: it reads no rotor files.
inline constexpr const char* kHelicopterGeometry = "tgt4005/tgt4005.vnl";
inline constexpr const char* kHelicopterReflectance = "tgt4005/tgt4005_b0001_mat0001.brdf";
inline constexpr const char* kHelicopterSignature = "tgt4005/tgt4005_b0001_mat0001_ter0010_w0001_t1500_rad0001.rad";
inline constexpr const char* kHelicopterAtmosphere = "tgt4005/tgt4005_b0001_mat0001_ter0010_w0001_t1500_rad0001.atm";
inline constexpr const char* kHelicopterRotors = "tgt4005/tgt4005.rotor";

// Every file of the tree; the names begin with "data/".
std::vector<DemonstrationFile> dataTreeFiles();
} // namespace sorvane
