// The data tree that the engagements use: the folder data/, which serves as data root.
#pragma once

#include <vector>

#include "demonstrationfile.h"

// The stock files' names below the data root, which the viewer also falls back to.
inline constexpr const char* kTerrainTopography = "ter0010/ter0010.top";
inline constexpr const char* kTerrainRadiance = "ter0010/ter0010_w0001_t1500_b0001.rad";
inline constexpr const char* kTargetGeometry = "tgt4004/tgt4004.vnl";
inline constexpr const char* kTargetReflectance = "tgt4004/tgt4004_b0001_mat0004.brdf";
inline constexpr const char* kTargetSignature = "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.rad";
inline constexpr const char* kAtmosphere = "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm";

// Every file of the tree; the names begin with "data/".
std::vector<DemonstrationFile> dataTreeFiles();
