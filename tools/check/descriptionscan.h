// Looks over the XML of a terrain's description: whether it is well formed, and where its tiles stand.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "finding.h"

namespace sorvane {
struct DescriptionScan {
    bool isWellFormed = false;
    std::vector<std::int64_t> tileLines; // of each <subterrain>, in order
};

// Reports what is not well formed, and numbers that the viewer reads as 0 or in part.
DescriptionScan scanDescription(const std::string& path, FindingList& findings);
} // namespace sorvane
