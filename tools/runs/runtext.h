// Rows of a set as lines of text.
#pragma once

#include <string>
#include <vector>

#include "runrow.h"

namespace sorvane {
enum class RunFormat { Csv, JsonLines };

// The names of the columns; JSON lines have none, each names its values itself.
std::string runHeading(RunFormat format, const std::vector<std::string>& columns);
// Undefined values are empty in CSV and null in JSON. Text that isn't UTF-8 gets U+FFFD in the place of what is wrong.
std::string runLine(RunFormat format, const std::vector<std::string>& columns, const RunRow& row);
} // namespace sorvane
