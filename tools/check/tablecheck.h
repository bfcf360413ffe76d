// Checks the text tables of a terrain set.
#pragma once

#include <string>

#include "finding.h"

namespace sorvane {
void checkClassToMaterial(const std::string& path, FindingList& findings);
void checkTemperatures(const std::string& path, FindingList& findings);
void checkBand(const std::string& path, FindingList& findings);
void checkClassToAster(const std::string& path, FindingList& findings);
void checkSpectralSample(const std::string& path, FindingList& findings);
} // namespace sorvane
