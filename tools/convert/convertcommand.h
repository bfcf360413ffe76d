// `sorvane convert`: writes a trajectory again, cut, scaled, moved or turned.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addConvertCommand(CLI::App& parent);
} // namespace sorvane
