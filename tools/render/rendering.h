// Renders engagements into pictures and movies.
#pragma once

#include "renderplan.h"
#include "subcommand.h"

namespace sorvane {
// Draws the frames of the request and writes them, with messages and progress on `streams.err`. A file that can't be
// used is named and left out: ProblemsFound. Failed, with nothing under a name that is not whole, when nothing could be
// drawn or written or when the process was asked to stop. Prints the command that repeats it on `streams.out` if
// `printsCommand`.
ExitStatus render(const RenderRequest& request, bool printsCommand, Streams& streams);
} // namespace sorvane
