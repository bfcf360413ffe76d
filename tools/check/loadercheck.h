// Runs one of the viewer's loaders and makes findings of what it says.
#pragma once

#include <functional>
#include <string>

#include "finding.h"

namespace sorvane {
// `load` answers whether it succeeded. Its error messages become findings, at the line that they name if they do; when
// it fails without one, its other messages, or else `failureText`. The end of the process that a fault asks for fails
// the load and no more. Answers whether there was nothing to find.
bool checkLoader(const std::function<bool()>& load, FindingList& findings, const std::string& failureText);
} // namespace sorvane
