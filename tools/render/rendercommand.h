// `sorvane render`: pictures and movies of engagements, without a window.
#pragma once

#include "subcommand.h"

SubCommand addRenderCommand(CLI::App& parent);
