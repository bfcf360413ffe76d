// `sorvane measures`: lists what can be measured of an engagement.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addMeasuresCommand(CLI::App& parent);
} // namespace sorvane
