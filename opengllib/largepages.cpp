// Memory for large arrays.
#include "largepages.h"

#include <memory>
#include <sys/mman.h>

namespace sorvane {
namespace {
constexpr std::size_t kLargePage = std::size_t{2} << 20;
} // namespace

void useLargePages(void* data, std::size_t bytes) {
    if (data == nullptr || std::align(kLargePage, kLargePage, data, bytes) == nullptr)
        return;
    [[maybe_unused]] const int result = ::madvise(data, bytes / kLargePage * kLargePage, MADV_HUGEPAGE);
}
} // namespace sorvane
