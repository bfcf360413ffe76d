// Reads many files on all processors.
#pragma once

#include <cstddef>
#include <functional>

#include "runrow.h"

namespace sorvane {
// Calls `read` with the numbers below `count` on so many threads at once, and `take` with the rows on this thread, in
// the order of the numbers. Ends early when `take` returns false. Only a few hundred rows wait at any time.
void survey(
    std::size_t count, std::size_t threads, const std::function<RunRow(std::size_t)>& read,
    const std::function<bool(RunRow)>& take);
} // namespace sorvane
