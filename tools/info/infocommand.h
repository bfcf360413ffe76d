// `sorvane info`: tells what is in files.
#pragma once

#include "subcommand.h"

SubCommand addInfoCommand(CLI::App& parent);
