// `sorvane info`: tells what is in files.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addInfoCommand(CLI::App& parent);
} // namespace sorvane
