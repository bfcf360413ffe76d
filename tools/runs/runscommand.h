// `sorvane runs`: makes a table with a row for each engagement of a set.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addRunsCommand(CLI::App& parent);
} // namespace sorvane
