// `sorvane signature`: what bodies radiate into all directions.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addSignatureCommand(CLI::App& parent);
} // namespace sorvane
