// `sorvane check`: tells what is wrong with files.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addCheckCommand(CLI::App& parent);
} // namespace sorvane
