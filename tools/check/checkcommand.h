// `sorvane check`: tells what is wrong with files.
#pragma once

#include "subcommand.h"

SubCommand addCheckCommand(CLI::App& parent);
