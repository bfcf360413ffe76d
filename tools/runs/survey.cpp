// Reads many files on all processors.
#include "survey.h"

#include "readahead.h"

namespace sorvane {
void survey(
    std::size_t count, std::size_t threads, const std::function<RunRow(std::size_t)>& read,
    const std::function<bool(RunRow)>& take) {
    constexpr std::size_t kMostWaiting = 256;
    ReadAhead<RunRow> rows(count, threads, kMostWaiting, read);
    for (std::size_t number = 0; number < count; ++number)
        if (!take(rows.take()))
            break;
}
} // namespace sorvane
