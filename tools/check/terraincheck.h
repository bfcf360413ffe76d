// Checks a terrain: its tiles against their files, and the files that go together against each other.
#pragma once

#include <string>
#include <vector>

#include "finding.h"

namespace sorvane {
// Answer the files that exist and are still to be checked by themselves.

// A set by its description.
std::vector<std::string> checkTerrainSet(const std::string& description, FindingList& findings);
// What a trajectory names: a set when there is a description, else one tile.
std::vector<std::string>
checkTerrainOf(const std::string& topography, const std::string& radiance, FindingList& findings);
} // namespace sorvane
