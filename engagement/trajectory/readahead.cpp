// Reads many files on several threads and hands out what they gave in order.
#include "readahead.h"

#include <sched.h>

namespace sorvane {
std::size_t usableProcessors() {
    cpu_set_t processors;
    if (::sched_getaffinity(0, sizeof processors, &processors) != 0)
        return std::max(std::thread::hardware_concurrency(), 1U); // more than the set has room for
    return static_cast<std::size_t>(std::max(CPU_COUNT(&processors), 1));
}
} // namespace sorvane
