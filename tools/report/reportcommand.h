// `sorvane report`: makes one page of a set of engagements, with nothing outside it.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addReportCommand(CLI::App& parent);
} // namespace sorvane
