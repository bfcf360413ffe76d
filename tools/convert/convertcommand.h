// `sorvane convert`: writes a trajectory again, cut, scaled, moved or turned.
#pragma once

#include "subcommand.h"

SubCommand addConvertCommand(CLI::App& parent);
