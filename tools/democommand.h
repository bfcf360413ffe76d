// `sorvane demo`: makes the demonstration data.
#pragma once

#include "subcommand.h"

SubCommand addDemoCommand(CLI::App& parent);
