// `sorvane compare`: tells how two pictures or two trajectories differ.
#pragma once

#include "subcommand.h"

SubCommand addCompareCommand(CLI::App& parent);
