// `sorvane demo`: makes the demonstration data.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addDemoCommand(CLI::App& parent);
} // namespace sorvane
