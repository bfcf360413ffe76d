// `sorvane plot`: draws curves over time into a file.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addPlotCommand(CLI::App& parent);
} // namespace sorvane
