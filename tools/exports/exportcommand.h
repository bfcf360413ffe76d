// `sorvane export`: writes a trajectory as a table or for a map.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addExportCommand(CLI::App& parent);
} // namespace sorvane
