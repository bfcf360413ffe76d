// Measures by their names, as the command line has them.
#pragma once

#include <string>
#include <vector>

#include "measure.h"
#include "problem.h"

namespace sorvane {
// The measures with values over time by a list of names, separated by commas; "all" is each of them. Those of flares'
// moments only `withFlares`. What is wrong with the list otherwise.
Outcome<std::vector<const Measure*>> chooseMeasures(const std::string& list, bool withFlares);
} // namespace sorvane
