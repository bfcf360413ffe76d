// `sorvane export`: writes a trajectory as a table, for a map or as a scene.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addExportCommand(CLI::App& parent);
} // namespace sorvane
