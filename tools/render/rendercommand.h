// `sorvane render`: pictures and movies of engagements, without a window.
#pragma once

#include "subcommand.h"

namespace sorvane {
SubCommand addRenderCommand(CLI::App& parent);
} // namespace sorvane
