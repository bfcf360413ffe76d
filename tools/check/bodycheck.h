// Checks the files of a body, each by itself and their counts of facets against each other.
#pragma once

#include <optional>
#include <string>

#include "finding.h"

namespace sorvane {
// Each answers the number of facets that the file says it has; nothing when it doesn't come to that.
std::optional<int> checkGeometry(const std::string& path, FindingList& findings);
std::optional<int> checkReflectance(const std::string& path, FindingList& findings);
std::optional<int> checkBodyRadiance(const std::string& path, FindingList& findings);
std::optional<int> checkFormFactors(const std::string& path, FindingList& findings);

// The same for a geometry file, from its first line and without a check.
std::optional<int> facetsOfGeometry(const std::string& path);

void checkAtmosphere(const std::string& path, FindingList& findings);
void checkRotors(const std::string& path, FindingList& findings);
} // namespace sorvane
