// `sorvane stats`: answers what a set of engagements comes to.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addStatsCommand(CLI::App& parent);
} // namespace sorvane
