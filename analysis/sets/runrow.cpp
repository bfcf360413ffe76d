// An engagement as a row of a table of many.
#include "runrow.h"

#include <sys/stat.h>

namespace sorvane {
RunStamp runStamp(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    constexpr std::int64_t kNanoseconds = 1000000000;
    return {status.st_size, status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}
} // namespace sorvane
