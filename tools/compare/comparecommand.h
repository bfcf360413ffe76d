// `sorvane compare`: tells how two pictures or two trajectories differ.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addCompareCommand(CLI::App& parent);
} // namespace sorvane
