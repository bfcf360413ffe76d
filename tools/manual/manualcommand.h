// `sorvane manual`: writes the manual page and the completions; hidden, for who packages the command.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addManualCommand(CLI::App& parent);
} // namespace sorvane
