// Writes what a sub-command makes to the file that it was asked for, or to standard output.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "problem.h"
#include "standardstreams.h"

namespace sorvane {
// Calls `write` with the stream for `output`: "-" and "/dev/stdout" are streams.out, any other is a file that appears
// whole or not at all. What was wrong, for people; nothing when all is well.
std::optional<sorvane::Problem>
writeResult(const std::string& output, Streams& streams, const std::function<void(std::ostream&)>& write);
} // namespace sorvane
